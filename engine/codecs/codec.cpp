#include "engine/codecs/codec.h"

#include <algorithm>

namespace vantoro {

namespace {
constexpr std::size_t kMostAtOnce = 512 << 10;
}

Result<std::size_t> Decoder::read(Bytes into)
{
    if (!m_state)
        return m_state.error();
    if (into.empty())
        return std::size_t{0};
    TRY(m_cancel.check());
    SpanWriter out(into.first(std::min(into.size(), kMostAtOnce)));
    m_state = guarded([&] { return decode(out); });
    m_position += out.used();
    if (!m_state && out.used() == 0)
        return m_state.error();
    return out.used();
}

Result<void> BufferedInput::refill()
{
    m_position = kUnreadRoom;
    m_end = kUnreadRoom;
    m_end += TRY(m_stream->read(Bytes(m_buffer.get() + kUnreadRoom, m_size - kUnreadRoom)));
    return {};
}

}
