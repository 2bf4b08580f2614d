#include "engine/codecs/lsb_prefix_code.h"

namespace vantoro {

Result<void> LsbPrefixCode::build(ConstBytes lengths)
{
    m_quick.fill({});
    m_counts.fill(0);
    for (const auto length : lengths) {
        if (std::to_integer<unsigned>(length) > kMaxLength)
            return Error{ErrorCode::Corrupt, "prefix code: length"};
        ++m_counts[std::to_integer<unsigned>(length)];
    }
    m_counts[0] = 0;
    std::array<std::uint16_t, kMaxLength + 2> starts{}; // of each length in m_symbols
    std::array<std::uint32_t, kMaxLength + 2> codes{};
    for (unsigned length = 1; length <= kMaxLength; ++length) {
        starts[length + 1] = static_cast<std::uint16_t>(starts[length] + m_counts[length]);
        codes[length + 1] = (codes[length] + m_counts[length]) << 1;
        if (codes[length] + m_counts[length] > 1U << length)
            return Error{ErrorCode::Corrupt, "prefix code: over-subscribed"};
    }
    m_symbols.assign(starts[kMaxLength + 1], 0);
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        const auto length = std::to_integer<unsigned>(lengths[symbol]);
        if (length == 0)
            continue;
        m_symbols[starts[length]++] = static_cast<std::uint16_t>(symbol);
        const auto code = codes[length]++;
        if (length > kQuickBits)
            continue;
        std::uint32_t reversed = 0;
        for (unsigned bit = 0; bit < length; ++bit)
            reversed |= (code >> bit & 1) << (length - 1 - bit);
        for (auto at = reversed; at < m_quick.size(); at += 1U << length)
            m_quick[at] = {static_cast<std::uint16_t>(symbol), static_cast<std::uint8_t>(length)};
    }
    return {};
}

/// Bit by bit: the codes of each length are consecutive numbers.
int LsbPrefixCode::decodeLong(LsbBits& bits, std::uint32_t inverted) const
{
    const auto ahead = bits.peek(kMaxLength) ^ inverted;
    std::uint32_t code = 0, first = 0;
    std::size_t index = 0;
    for (unsigned length = 1; length <= kMaxLength; ++length) {
        code |= ahead >> (length - 1) & 1;
        const std::uint32_t count = m_counts[length];
        if (code < first + count) {
            bits.skip(length);
            return m_symbols[index + (code - first)];
        }
        index += count;
        first = (first + count) << 1;
        code <<= 1;
    }
    return -1;
}

}
