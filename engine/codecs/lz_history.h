#pragma once

#include "engine/codecs/codec.h"

#include <algorithm>
#include <array>

namespace vantoro {

/// The last kSize bytes of a decoder's output, which matches are copied from, and the match that is being copied.
/// Before the start of the output lie zeros. kSize is a power of two.
template <std::size_t kSize> class LzHistory {
public:
    void put(std::byte value, SpanWriter& out)
    {
        out.put(value);
        m_ring[m_next++ % kSize] = value;
    }
    /// Begins a match; `distance` from 1 to kSize.
    void startMatch(std::size_t distance, std::size_t length)
    {
        m_distance = distance;
        m_left = length;
    }
    bool isCopying() const { return m_left > 0; }
    /// Goes on with the match as far as there is room.
    void copy(SpanWriter& out)
    {
        const auto count = std::min(m_left, out.room());
        for (std::size_t i = 0; i < count; ++i)
            put(m_ring[(m_next - m_distance) % kSize], out);
        m_left -= count;
    }
    /// How far back the output reaches.
    std::uint64_t length() const { return m_next; }

private:
    std::array<std::byte, kSize> m_ring{};
    std::uint64_t m_next = 0;
    std::size_t m_distance = 0, m_left = 0;
};

}
