#include "engine/codecs/codec.h"

namespace vantoro {

Result<std::size_t> Decoder::read(Bytes into)
{
    if (!m_state)
        return m_state.error();
    if (into.empty())
        return std::size_t{0};
    SpanWriter out(into);
    m_state = decode(out);
    if (!m_state && out.used() == 0)
        return m_state.error();
    return out.used();
}

Result<void> BufferedInput::refill()
{
    m_position = 0;
    m_end = 0;
    m_end = TRY(m_stream->read(m_buffer));
    return {};
}

}
