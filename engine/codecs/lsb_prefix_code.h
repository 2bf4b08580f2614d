#pragma once

#include "engine/codecs/lsb_bits.h"

#include <array>

namespace vantoro {

/// A canonical prefix code: shorter codes first, within a length ascending symbols, each code stored with its first bit
/// lowest. Lengths up to 16, 0 for a symbol without a code.
class LsbPrefixCode {
public:
    static constexpr unsigned kMaxLength = 16;

    /// Corrupt when there are more codes than a length has room for. Codes may be missing: deflate has such sets.
    Result<void> build(ConstBytes lengths);

    /// Takes the next symbol out of filled bits; negative when no symbol has that code.
    int decode(LsbBits& bits, std::uint32_t inverted = 0) const
    {
        const auto& quick = m_quick[(bits.peek(kQuickBits) ^ inverted) & (m_quick.size() - 1)];
        if (quick.length != 0) [[likely]] {
            bits.skip(quick.length);
            return quick.symbol;
        }
        return decodeLong(bits, inverted);
    }

private:
    static constexpr unsigned kQuickBits = 10;
    struct Quick {
        std::uint16_t symbol = 0;
        std::uint8_t length = 0; // 0: longer than this table, or no code
    };
    int decodeLong(LsbBits& bits, std::uint32_t inverted) const;

    std::array<Quick, 1 << kQuickBits> m_quick;
    std::array<std::uint16_t, kMaxLength + 1> m_counts;
    std::vector<std::uint16_t> m_symbols; // in the order of their codes
};

}
