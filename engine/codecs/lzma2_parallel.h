#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// LZMA2 with matches that reach `dictionary` bytes back. Long streams consist of parts that begin with an empty
/// dictionary: with threads they are decoded side by side where several fit into memory.
Result<StreamPtr> openLzma2Parts(StreamPtr packed, std::uint64_t dictionary, const CodecParams& params);

/// One after the other.
Result<StreamPtr> openLzma2Serial(StreamPtr packed, std::uint64_t dictionary, const CodecParams& params);

}
