#pragma once

#include "engine/codecs/msb_bit_input.h"

#include <array>

namespace vantoro {

/// A canonical prefix code of lengths 0 (unused) to 15, read MSB first: codes are given by increasing length, within a
/// length by increasing symbol. Incomplete and empty codes are legal; meeting a code that is not given is an error.
class PrefixCode {
public:
    /// What decode() answers for a code that was not given.
    static constexpr unsigned kInvalid = 0xFFFF;
    static constexpr unsigned kMaxSymbols = 320;

    /// One length a symbol; Corrupt when the set is over-subscribed.
    Result<void> build(std::span<const std::uint8_t> lengths);

    /// Needs 15 bits in the window.
    unsigned decode(MsbBits& bits) const
    {
        const auto entry = m_fast[bits.window >> (64 - kFastBits)];
        if (entry != 0) [[likely]] {
            bits.skip(entry & 15);
            return entry >> 4;
        }
        return decodeLong(bits);
    }

private:
    static constexpr unsigned kFastBits = 10;
    static constexpr unsigned kMaxLength = 15;

    unsigned decodeLong(MsbBits& bits) const
    {
        const auto code = bits.peek(kMaxLength);
        for (unsigned length = kFastBits + 1; length <= kMaxLength; ++length) {
            if (code < m_limits[length]) {
                bits.skip(length);
                const auto index = m_offsets[length] + (code >> (kMaxLength - length));
                return m_symbols[index & 0xFFFF];
            }
        }
        return kInvalid;
    }

    std::array<std::uint16_t, 1 << kFastBits> m_fast{}; // symbol << 4 | length; 0: longer, or not given
    std::array<std::uint32_t, kMaxLength + 1> m_limits{}; // 15-bit codes below it have at most this length
    std::array<std::uint32_t, kMaxLength + 1> m_offsets{}; // of the length's first symbol, less its first code (wraps)
    std::array<std::uint16_t, kMaxSymbols> m_symbols{}; // by length, then value
};

}
