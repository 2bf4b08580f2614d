#pragma once

#include "engine/codecs/codec.h"

#include <memory>

namespace vantoro {

/// Raw deflate (RFC 1951) from memory to memory: twice as fast as a stream decoder where both sides are whole.
class BlockInflater {
public:
    BlockInflater();
    ~BlockInflater();
    BlockInflater(BlockInflater&&) noexcept;
    BlockInflater& operator=(BlockInflater&&) noexcept;

    /// Returns the number of bytes made. SizeMismatch when they do not fit in `out`, Corrupt for everything else.
    Result<std::size_t> inflate(ConstBytes packed, Bytes out);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

}
