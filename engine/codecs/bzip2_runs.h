#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// The first step of bzip2, undone last: after four equal bytes comes a count of further ones. Keeps the checksum over
/// what comes out.
class Bzip2Runs {
public:
    void begin(ConstBytes block);
    /// Until the writer is full or the block is used up.
    void expand(SpanWriter& out);
    bool isDone() const { return m_block.empty() && m_repeats == 0; }
    std::uint32_t checksum() const { return m_checksum; }

private:
    ConstBytes m_block; // what is left
    std::byte m_last{};
    unsigned m_run = 0; // times m_last came in a row, 0 after a count
    unsigned m_repeats = 0; // copies of m_last still to come
    std::uint32_t m_checksum = 0;
};

}
