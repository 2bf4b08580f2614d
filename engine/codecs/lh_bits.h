#pragma once

#include "engine/codecs/codec.h"

#include <array>

namespace vantoro {

/// MSB-first bits for the small decoders of the LHA and ARJ families. They may look a few bytes past the end, which
/// read as zeros; what goes further is Truncated.
class LhBits {
public:
    explicit LhBits(StreamPtr packed) : m_in(std::move(packed)) {}

    /// The next `bits` bits (at most 32), not consumed.
    Result<std::uint32_t> peek(unsigned bits)
    {
        while (m_count < bits)
            TRY(addByte());
        return static_cast<std::uint32_t>(m_window >> (m_count - bits) & ((std::uint64_t{1} << bits) - 1));
    }
    /// Only what peek() has shown.
    void skip(unsigned bits) { m_count -= bits; }
    Result<std::uint32_t> take(unsigned bits)
    {
        const auto value = TRY(peek(bits));
        skip(bits);
        return value;
    }

private:
    Result<void> addByte()
    {
        constexpr unsigned kMostPadding = 8;
        const auto ahead = TRY(m_in.peek());
        std::uint64_t byte = 0;
        if (!ahead.empty()) {
            byte = std::to_integer<std::uint64_t>(ahead.front());
            m_in.consume(1);
        } else if (++m_padding > kMostPadding) {
            return Error{ErrorCode::Truncated, "compressed data end too early"};
        }
        m_window = m_window << 8 | byte;
        m_count += 8;
        return {};
    }

    BufferedInput m_in;
    std::uint64_t m_window = 0; // the last bits read, at the bottom
    unsigned m_count = 0; // of them not consumed
    unsigned m_padding = 0;
};

/// What was decoded last, to copy from. Before the start lies a fill byte.
template <std::size_t kSize> class LhHistory {
public:
    explicit LhHistory(std::byte fill) { m_ring.fill(fill); }
    void put(std::byte value)
    {
        m_ring[m_next] = value;
        m_next = (m_next + 1) % kSize;
    }
    /// `distance` from 1 to kSize.
    std::byte back(std::size_t distance) const { return m_ring[(m_next + kSize - distance) % kSize]; }

private:
    std::array<std::byte, kSize> m_ring;
    std::size_t m_next = 0;
};

}
