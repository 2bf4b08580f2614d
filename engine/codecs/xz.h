#pragma once

#include "engine/codecs/codec.h"

#include "engine/io/source.h"

namespace vantoro {

/// The blocks of an .xz file that hold anything, in order. Empty when the index cannot be read.
struct XzBlocks {
    struct Block {
        std::uint64_t offset = 0; ///< of its header in the file
        std::uint64_t packedSize = 0; ///< header, padding and checksum included
        std::uint64_t size = 0;
        unsigned check = 0; ///< kind of the checksum, as the file has it
    };
    std::vector<Block> all;
    bool areSmall = false; ///< small enough for several in memory at once
    std::uint64_t size() const; ///< decoded
};
XzBlocks readXzBlocks(const ByteSource& source, const Limits& limits);

/// All streams of an .xz file with their padding; the checks of all blocks are verified. With several blocks and
/// threads the blocks are decoded side by side.
Result<StreamPtr> openXz(StreamPtr packed, const CodecParams& params = {}, XzBlocks blocks = {});

}
