#pragma once

#include "engine/codecs/codec.h"

#include "engine/io/source.h"

namespace vantoro {

/// Where the blocks of an .xz file end, in decoded bytes, ascending. Empty when the index cannot be read.
struct XzBlocks {
    std::vector<std::uint64_t> ends;
    bool areSmall = false; ///< small enough for several in memory at once
};
XzBlocks readXzBlocks(const ByteSource& source, const Limits& limits);

/// All streams of an .xz file with their padding; the checks of all blocks are verified. With several blocks and
/// threads the blocks are decoded side by side.
Result<StreamPtr> openXz(StreamPtr packed, const CodecParams& params = {}, XzBlocks blocks = {});

}
