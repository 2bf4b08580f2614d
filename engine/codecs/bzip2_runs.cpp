#include "engine/codecs/bzip2_runs.h"

#include "engine/codecs/late_isal.h"

namespace vantoro {

namespace {

constexpr std::uint64_t kLow7 = 0x7F7F7F7F7F7F7F7F;

/// The highest bit of each byte that is equal to the one before it in memory.
std::uint64_t equalToPrevious(const std::byte* at, std::byte previous)
{
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    const auto difference = word ^ (word << 8 | std::to_integer<std::uint64_t>(previous));
    return ~(((difference & kLow7) + kLow7) | difference | kLow7);
}

}

void Bzip2Runs::begin(ConstBytes block)
{
    m_block = block;
    m_run = 0;
    m_repeats = 0;
    m_checksum = 0;
}

void Bzip2Runs::expand(SpanWriter& out)
{
    const auto room = out.free();
    auto* to = room.data();
    auto* const limit = to + room.size();
    const auto* from = m_block.data();
    const auto* const end = from + m_block.size();
    while (to < limit) {
        if (m_repeats > 0) {
            const auto count = std::min<std::size_t>(m_repeats, static_cast<std::size_t>(limit - to));
            std::fill_n(to, count, m_last);
            to += count;
            m_repeats -= static_cast<unsigned>(count);
            continue;
        }
        if (from == end)
            break;
        // Eight bytes at once where no run of four can end among them.
        while (m_run == 1 && end - from >= 8 && limit - to >= 8) {
            const auto equal = equalToPrevious(from, m_last);
            if ((equal & equal >> 8) != 0)
                break;
            std::memcpy(to, from, 8);
            to += 8;
            from += 8;
            m_last = from[-1];
            m_run = (equal >> 63) != 0 ? 2 : 1;
        }
        if (to == limit || from == end)
            continue;
        const auto byte = *from++;
        *to++ = byte;
        if (byte != m_last || m_run == 0) {
            m_last = byte;
            m_run = 1;
        } else if (++m_run == 4) {
            m_run = 0;
            if (from < end)
                m_repeats = std::to_integer<unsigned>(*from++);
        }
    }
    const auto made = static_cast<std::size_t>(to - room.data());
    m_checksum = crc32_ieee(m_checksum, reinterpret_cast<const unsigned char*>(room.data()), made);
    m_block = ConstBytes(from, end);
    out.advance(made);
}

}
