#pragma once

#include "engine/io/stream.h"

#include <atomic>
#include <bit>
#include <cstring>
#include <memory>

namespace vantoro {

/// The part of an MSB-first bit reader that a hot loop keeps in registers: copy it, work, put it back.
/// Reading checks nothing; MsbBitInput guarantees readable bytes ahead.
struct MsbBits {
    const std::uint8_t* next = nullptr; ///< the byte after those in `window` (some bits of it may be in it already)
    std::uint64_t window = 0; ///< the coming bits, first bit at the top
    unsigned count = 0; ///< valid bits in `window`

    /// At least 56 bits afterwards. Reads 8 bytes at `next`.
    void fill()
    {
        std::uint64_t word;
        std::memcpy(&word, next, sizeof word);
        if constexpr (std::endian::native == std::endian::little)
            word = __builtin_bswap64(word);
        window |= word >> count;
        next += (63 - count) >> 3;
        count |= 56;
    }
    /// The next `bits` bits (1 to 32) without consuming them; needs that many in `window`.
    std::uint32_t peek(unsigned bits) const { return static_cast<std::uint32_t>(window >> (64 - bits)); }
    void skip(unsigned bits)
    {
        window <<= bits;
        count -= bits;
    }
    /// 0 to 32 bits out of `window`.
    std::uint32_t take(unsigned bits)
    {
        const auto value = static_cast<std::uint32_t>((window >> 1) >> (63 - bits));
        skip(bits);
        return value;
    }
};

/// MSB-first bits out of a stream. A decoder says with ready() how many bytes its next step may consume and then reads
/// without checks; past the end of the data it reads zeros, and the next ready() reports Truncated.
class MsbBitInput {
public:
    /// Starts a new stream, which outlives the reading of it. What was buffered of the last one is forgotten.
    void start(ByteStream& stream);

    /// Makes `bytes` bytes readable (at most kMaxReady); Truncated when the data end was passed before.
    Result<void> ready(std::size_t bytes)
    {
        if (m_bits.next + bytes <= m_end) [[likely]]
            return {};
        return refill(bytes);
    }
    static constexpr std::size_t kMaxReady = 4096;

    MsbBits& bits() { return m_bits; }
    std::uint32_t peek16()
    {
        m_bits.fill();
        return m_bits.peek(16);
    }
    void skip(unsigned bits) { m_bits.skip(bits); }
    /// 0 to 32 bits.
    std::uint32_t take(unsigned bits)
    {
        m_bits.fill();
        return m_bits.take(bits);
    }
    /// Drops the rest of a byte that was begun.
    void alignToByte()
    {
        m_bits.next -= m_bits.count / 8;
        m_bits.window = 0;
        m_bits.count = 0;
    }
    /// A whole byte, at a byte boundary reached by alignToByte(); 0 past the end.
    std::uint8_t takeByte()
    {
        if (m_bits.next >= m_end) [[unlikely]]
            return takeByteSlowly();
        return *m_bits.next++;
    }

    /// Goes forward to the byte at `position` of the stream; back only within the last step.
    Result<void> skipTo(std::uint64_t position);
    /// Bits consumed since start().
    std::uint64_t bitPosition() const
    {
        return (m_base + static_cast<std::uint64_t>(m_bits.next - m_buffer.get())) * 8 - m_bits.count;
    }
    /// Where in memory the byte at `position` of the stream is or will be, clamped to what is buffered.
    const std::uint8_t* clampedAddress(std::uint64_t position) const;
    /// A loop that has checked `bits().next < softEnd(n)` may consume n bytes.
    const std::uint8_t* softEnd(std::size_t bytes) const
    {
        return m_end - m_buffer.get() > static_cast<std::ptrdiff_t>(bytes) ? m_end - bytes : m_buffer.get();
    }
    /// More was consumed than there is.
    bool isOverrun() const { return m_atEnd && bitPosition() > m_total * 8; }
    /// Bytes that takeByte() made up.
    std::uint64_t missingBytes() const { return m_missing; }
    /// Fewer than `bits` (at most 128) bits are left.
    bool hasFewerThan(unsigned bits);
    /// What the stream itself reported (Io and such); a decoder that stops on Truncated returns this instead.
    const Result<void>& streamState() const { return m_streamState; }

private:
    static constexpr std::size_t kBuffer = (256 << 10) + kMaxReady;
    static constexpr std::size_t kPadding = kMaxReady + 64; // zeros that may be read behind the end

    Result<void> refill(std::size_t bytes);
    std::uint8_t takeByteSlowly();
    void load(std::size_t bytes);

    ByteStream* m_stream = nullptr;
    std::unique_ptr<std::uint8_t[]> m_buffer;
    MsbBits m_bits;
    const std::uint8_t* m_end = nullptr; // of the stream's bytes in m_buffer
    std::uint64_t m_base = 0; // position in the stream of the buffer's first byte
    std::uint64_t m_total = 0; // bytes got from the stream so far
    std::uint64_t m_missing = 0;
    bool m_atEnd = false;
    Result<void> m_streamState;
};

}
