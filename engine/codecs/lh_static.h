#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// LZ77 with static Huffman codes in blocks, as LHA's -lh4- to -lh7-, ARJ's methods 1 to 3 and zoo's LZH share it.
struct LhStaticParams {
    unsigned distanceSymbols = 14; ///< 13 lh4, 14 lh5 and zoo, 16 lh6, 17 lh7 and ARJ
    unsigned distanceCountBits = 4; ///< 4 up to lh5, 5 from lh6
    std::byte fill{0x20}; ///< what lies before the start
    bool emptyBlockEnds = false; ///< zoo; elsewhere a count of 0 means 65536
};

/// Ends after `unpackedSize` bytes; a copy that would pass it is cut off.
StreamPtr openLhStatic(StreamPtr packed, const LhStaticParams& params, std::uint64_t unpackedSize);

}
