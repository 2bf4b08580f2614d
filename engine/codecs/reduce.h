#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// Reduce, zip's methods 2 to 5: bytes guessed from the byte before, then repeats. `factor` from 1 to 4; `size` bytes
/// come out.
StreamPtr openReduce(StreamPtr packed, unsigned factor, std::uint64_t size, const CodecParams& params = {});

}
