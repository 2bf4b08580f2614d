#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// Decodes the blocks of one deflate stream (RFC 1951) after another and keeps a checksum over their output. Shared by
/// the wrappers around deflate, which read their own headers and trailers.
class Inflater {
public:
    enum class Checksum : std::uint8_t { None, Crc32, Adler32 };
    explicit Inflater(Checksum kind);
    ~Inflater();
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /// Begins the next stream.
    void reset();
    /// Decodes until the writer is full or the last block has ended: then true, and `in` stands behind that block.
    Result<bool> inflate(BufferedInput& in, SpanWriter& out);
    /// Of what came out since reset().
    std::uint32_t checksum() const;
    /// Length, modulo 2^32, of what came out since reset().
    std::uint32_t length() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

}
