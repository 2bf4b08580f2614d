#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// LSB-first bits. Past the end they read as zeros; check() tells when such bits were taken.
class LsbBits {
public:
    static constexpr unsigned kFilled = 48; ///< bits that fill() makes ready

    explicit LsbBits(StreamPtr packed) : m_in(std::move(packed)) {}

    /// Once before bits are taken, at most kFilled of them.
    Result<void> fill()
    {
        if (m_count >= kFilled) [[likely]]
            return {};
        return refill();
    }
    std::uint32_t peek(unsigned bits) const { return static_cast<std::uint32_t>(m_window & ((1ULL << bits) - 1)); }
    void skip(unsigned bits)
    {
        m_window >>= bits;
        m_count -= bits;
    }
    std::uint32_t take(unsigned bits)
    {
        const auto value = peek(bits);
        skip(bits);
        return value;
    }
    /// fill() and take().
    Result<std::uint32_t> read(unsigned bits)
    {
        TRY(fill());
        return take(bits);
    }
    void skipToByte() { skip(m_count % 8); }
    Result<void> check() const
    {
        if (m_padding > m_count)
            return Error{ErrorCode::Truncated, "compressed data end too early"};
        return {};
    }

private:
    Result<void> refill()
    {
        TRY(check());
        while (m_count <= 56) {
            const auto ahead = TRY(m_in.peek());
            if (ahead.empty()) {
                m_count += 8;
                m_padding += 8;
                continue;
            }
            std::size_t used = 0;
            for (; m_count <= 56 && used < ahead.size(); ++used, m_count += 8)
                m_window |= std::to_integer<std::uint64_t>(ahead[used]) << m_count;
            m_in.consume(used);
        }
        return {};
    }

    BufferedInput m_in;
    std::uint64_t m_window = 0;
    unsigned m_count = 0; // bits in the window
    unsigned m_padding = 0; // of them zeros that the input does not have, at its top
};

}
