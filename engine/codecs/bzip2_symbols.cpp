#include "engine/codecs/bzip2_symbols.h"

#include <bit>
#include <cstring>

#if defined(__x86_64__)
#include <emmintrin.h>
#endif

namespace vantoro {

namespace {

/// The bytes seen, latest first.
class RecentBytes {
public:
    explicit RecentBytes(const std::array<bool, 256>& used)
    {
        std::size_t count = 0;
        for (unsigned value = 0; value < used.size(); ++value) {
            if (used[value])
                m_order[count++] = static_cast<std::uint8_t>(value);
        }
    }
    std::uint8_t front() const { return m_order[0]; }
    /// Moves a byte of the list to its front and says where it was.
    std::size_t moveToFront(std::uint8_t byte);

private:
    alignas(16) std::array<std::uint8_t, 256> m_order{};
};

#if defined(__x86_64__)

/// 16 bytes from `kLanes + 16 - n` on: the first n set.
alignas(16) constexpr auto kLanes = [] {
    std::array<std::uint8_t, 32> lanes{};
    for (std::size_t i = 0; i < 16; ++i)
        lanes[i] = 0xFF;
    return lanes;
}();

inline std::size_t RecentBytes::moveToFront(std::uint8_t byte)
{
    const auto wanted = _mm_set1_epi8(static_cast<char>(byte));
    auto before = _mm_cvtsi32_si128(byte); // what moves into the first lane
    for (std::size_t at = 0;; at += 16) {
        auto* const place = reinterpret_cast<__m128i*>(m_order.data() + at);
        const auto lanes = _mm_load_si128(place);
        const auto hits = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(lanes, wanted)));
        const auto moved = _mm_or_si128(_mm_slli_si128(lanes, 1), before);
        if (hits != 0) {
            const auto lane = static_cast<std::size_t>(std::countr_zero(hits));
            const auto upTo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(kLanes.data() + 15 - lane));
            _mm_store_si128(place, _mm_or_si128(_mm_and_si128(upTo, moved), _mm_andnot_si128(upTo, lanes)));
            return at + lane;
        }
        _mm_store_si128(place, moved);
        before = _mm_srli_si128(lanes, 15);
    }
}

#else

inline std::size_t RecentBytes::moveToFront(std::uint8_t byte)
{
    const auto* const found = static_cast<const std::uint8_t*>(std::memchr(m_order.data(), byte, m_order.size()));
    const auto place = static_cast<std::size_t>(found - m_order.data());
    std::memmove(m_order.data() + 1, m_order.data(), place);
    m_order[0] = byte;
    return place;
}

#endif

}

void Bzip2Symbols::make(ConstBytes sorted)
{
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(sorted.data());
    m_used.fill(false);
    for (std::size_t i = 0; i < sorted.size(); ++i)
        m_used[bytes[i]] = true;
    m_alphabetSize = 2;
    for (const auto used : m_used)
        m_alphabetSize += used ? 1 : 0;
    m_frequencies.fill(0);
    m_symbols.resize(sorted.size() + 1);
    m_count = 0;

    RecentBytes recent(m_used);
    for (std::size_t i = 0; i < sorted.size();) {
        const auto begin = i;
        while (i < sorted.size() && bytes[i] == recent.front())
            ++i;
        if (i > begin)
            putRun(i - begin);
        if (i == sorted.size())
            break;
        const auto symbol = recent.moveToFront(bytes[i++]) + 1;
        ++m_frequencies[symbol];
        m_symbols[m_count++] = static_cast<std::uint16_t>(symbol);
    }
    const auto end = m_alphabetSize - 1;
    m_symbols[m_count++] = static_cast<std::uint16_t>(end);
    m_frequencies[end] = 1;
}

/// As a number of digits 1 and 2, the lowest first; the symbols are 0 and 1.
void Bzip2Symbols::putRun(std::size_t length)
{
    for (++length; length > 1; length >>= 1) {
        const auto digit = length & 1;
        ++m_frequencies[digit];
        m_symbols[m_count++] = static_cast<std::uint16_t>(digit);
    }
}

}
