#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

struct ImplodeParams {
    bool hasLargeWindow = false; ///< 8 KiB rather than 4
    bool hasLiteralTree = false; ///< three trees rather than two
    /// Shortest match; by the rule 3 with a literal tree and 2 without. Some very old packers went by the window.
    unsigned leastMatch = 2;
    std::uint64_t size = 0; ///< decoded bytes: there is no end mark
};

/// Implode, zip's method 6: a sliding window with static Shannon-Fano trees.
StreamPtr openImplode(StreamPtr packed, const ImplodeParams& implode, const CodecParams& params = {});

}
