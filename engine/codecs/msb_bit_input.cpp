#include "engine/codecs/msb_bit_input.h"

#include <algorithm>

namespace vantoro {

void MsbBitInput::start(ByteStream& stream)
{
    m_stream = &stream;
    if (!m_buffer)
        m_buffer
            = std::make_unique_for_overwrite<std::uint8_t[]>(kBuffer + kPadding); // a small entry fills little of it
    m_bits = {m_buffer.get(), 0, 0};
    m_end = m_buffer.get();
    m_base = 0;
    m_total = 0;
    m_missing = 0;
    m_atEnd = false;
    m_streamState = {};
    load(1);
}

const std::uint8_t* MsbBitInput::clampedAddress(std::uint64_t position) const
{
    if (position <= m_base)
        return m_buffer.get();
    return m_buffer.get()
        + std::min<std::uint64_t>(position - m_base, static_cast<std::uint64_t>(m_end - m_buffer.get()));
}

void MsbBitInput::load(std::size_t bytes)
{
    if (m_atEnd)
        return;
    // The bit window is rebuilt from the bytes: bits that it took from beyond the data before were zeros.
    const auto position = bitPosition();
    const auto buffered = static_cast<std::size_t>(m_end - m_buffer.get());
    const auto consumed = std::min<std::size_t>(static_cast<std::size_t>(position / 8 - m_base), buffered);
    auto used = buffered - consumed;
    if (used > 0)
        std::memmove(m_buffer.get(), m_buffer.get() + consumed, used);
    m_base += consumed;
    const auto ahead = static_cast<std::size_t>(position / 8 - m_base); // consumed, but not read yet
    while (used < ahead + bytes) {
        const auto got = m_stream->read(Bytes(reinterpret_cast<std::byte*>(m_buffer.get()) + used, kBuffer - used));
        if (!got)
            m_streamState = got.error();
        m_atEnd = !got || *got == 0;
        if (m_atEnd)
            break;
        used += *got;
        m_total += *got;
    }
    m_end = m_buffer.get() + used;
    std::fill_n(m_buffer.get() + used, kPadding, std::uint8_t{0});
    m_bits = {m_buffer.get() + std::min(ahead, used + kMaxReady), 0, 0};
    m_bits.fill();
    m_bits.skip(static_cast<unsigned>(position % 8));
}

Result<void> MsbBitInput::refill(std::size_t bytes)
{
    load(bytes);
    if (!isOverrun())
        return {};
    if (!m_streamState)
        return m_streamState;
    return Error{ErrorCode::Truncated, "compressed data end too early"};
}

Result<void> MsbBitInput::skipTo(std::uint64_t position)
{
    alignToByte();
    while (bitPosition() < position * 8) {
        const auto left = position - bitPosition() / 8;
        const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(left, kMaxReady));
        TRY(ready(part));
        alignToByte(); // ready() may have filled the window
        m_bits.next += part;
    }
    if (isOverrun())
        return Error{ErrorCode::Truncated, "compressed data end too early"};
    return {};
}

bool MsbBitInput::hasFewerThan(unsigned bits)
{
    if (m_end - m_bits.next < 16)
        load(16);
    return m_atEnd && bitPosition() + bits > m_total * 8;
}

std::uint8_t MsbBitInput::takeByteSlowly()
{
    load(1);
    alignToByte(); // load() has filled the window again
    if (m_bits.next < m_end)
        return *m_bits.next++;
    ++m_missing;
    return 0;
}

}
