#pragma once

#include "engine/io/cancel.h"
#include "engine/io/stream.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace vantoro {

/// What every decoder may be told.
struct CodecParams {
    unsigned threads = 1; ///< decoders that may run at once
    Limits limits;
    CancelToken cancel;
};

/// Room for a decoder's output: the part of the caller's buffer that is still free.
class SpanWriter {
public:
    explicit SpanWriter(Bytes into) : m_into(into) {}
    std::size_t room() const { return m_into.size() - m_used; }
    std::size_t used() const { return m_used; }
    void put(std::byte value) { m_into[m_used++] = value; }
    void put(ConstBytes block)
    {
        std::memcpy(m_into.data() + m_used, block.data(), block.size());
        m_used += block.size();
    }
    /// The free part, to be filled from its front; advance() says how far.
    Bytes free() { return m_into.subspan(m_used); }
    void advance(std::size_t count) { m_used += count; }

private:
    Bytes m_into;
    std::size_t m_used = 0;
};

/// Base of the stream decoders: hands out what was decoded before a fault and the fault on the next call, so that
/// damaged files are salvaged.
class Decoder : public ByteStream {
public:
    Decoder() = default;
    explicit Decoder(CancelToken cancel) : m_cancel(std::move(cancel)) {}
    Result<std::size_t> read(Bytes into) final;
    std::uint64_t verifiedBytes() const override { return m_verified; }

protected:
    /// Fills the writer as far as it can; leaving it without a byte means the end. The writer has room for 512 KiB at
    /// most, so that the stop flag is asked often enough between the calls.
    virtual Result<void> decode(SpanWriter& out) = 0;
    /// A check over everything decoded up to here held.
    void markVerified(const SpanWriter& out) { m_verified = m_position + out.used(); }
    void markVerifiedUpTo(std::uint64_t position) { m_verified = std::max(m_verified, position); }
    /// Bytes handed out before the current decode().
    std::uint64_t position() const { return m_position; }
    const CancelToken& cancelToken() const { return m_cancel; }

private:
    Result<void> m_state; // a fault kept for the next call
    CancelToken m_cancel;
    std::uint64_t m_position = 0;
    std::uint64_t m_verified = 0;
};

/// Byte-wise input for decoders over a stream.
class BufferedInput {
public:
    explicit BufferedInput(StreamPtr stream, std::size_t bufferSize = 64 << 10)
        : m_stream(std::move(stream))
        , m_size(kUnreadRoom + bufferSize)
        , m_buffer(std::make_unique_for_overwrite<std::byte[]>(m_size))
    {
    }
    /// The next byte; Truncated at the end.
    Result<std::byte> next()
    {
        if (m_position == m_end) [[unlikely]]
            TRY(refill());
        if (m_position == m_end)
            return Error{ErrorCode::Truncated, "compressed data end too early"};
        return m_buffer[m_position++];
    }
    /// What is buffered, refilled when empty; empty only at the end.
    Result<ConstBytes> peek()
    {
        if (m_position == m_end)
            TRY(refill());
        return ConstBytes(m_buffer.get() + m_position, m_end - m_position);
    }
    void consume(std::size_t count) { m_position += count; }
    /// Puts back bytes that were consumed last, 16 at most: what a decoder's bit buffer read ahead.
    void unread(ConstBytes bytes)
    {
        m_position -= bytes.size();
        std::memcpy(m_buffer.get() + m_position, bytes.data(), bytes.size());
    }

private:
    static constexpr std::size_t kUnreadRoom = 16; // in front of the buffered bytes
    Result<void> refill();
    StreamPtr m_stream;
    std::size_t m_size;
    std::unique_ptr<std::byte[]> m_buffer; // not cleared: small entries fill little of it
    std::size_t m_position = kUnreadRoom, m_end = kUnreadRoom;
};

}
