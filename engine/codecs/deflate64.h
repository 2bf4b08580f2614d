#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// Deflate64, zip's method 9: deflate with a window of 64 KiB, matches up to 65538 bytes and two more distance codes.
StreamPtr openDeflate64(StreamPtr packed, const CodecParams& params = {});

}
