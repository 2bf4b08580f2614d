#include "engine/codecs/prefix_code.h"

#include <algorithm>

namespace vantoro {

Result<void> PrefixCode::build(std::span<const std::uint8_t> lengths)
{
    assert(lengths.size() <= kMaxSymbols);
    std::array<std::uint32_t, kMaxLength + 1> counts{};
    for (const auto length : lengths)
        ++counts[length];
    counts[0] = 0;

    std::array<std::uint32_t, kMaxLength + 1> firstIndex{};
    std::uint32_t code = 0; // the next one, aligned to 15 bits
    std::uint32_t index = 0;
    for (unsigned length = 1; length <= kMaxLength; ++length) {
        m_offsets[length] = index - (code >> (kMaxLength - length));
        firstIndex[length] = index;
        index += counts[length];
        code += counts[length] << (kMaxLength - length);
        if (code > 1U << kMaxLength)
            return Error{ErrorCode::Corrupt, "prefix code over-subscribed"};
        m_limits[length] = code;
    }
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        if (lengths[symbol] != 0)
            m_symbols[firstIndex[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
    }

    std::size_t filled = 0;
    std::size_t next = 0;
    for (unsigned length = 1; length <= kFastBits; ++length) {
        const auto span = std::size_t{1} << (kFastBits - length);
        for (std::uint32_t i = 0; i < counts[length]; ++i, ++next) {
            std::fill_n(m_fast.begin() + static_cast<std::ptrdiff_t>(filled), span,
                        static_cast<std::uint16_t>(unsigned{m_symbols[next]} << 4 | length));
            filled += span;
        }
    }
    std::fill(m_fast.begin() + static_cast<std::ptrdiff_t>(filled), m_fast.end(), std::uint16_t{0});
    return {};
}

}
