#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// Shrink, zip's method 1: LZW with codes of 9 to 13 bits whose table is cleared in part. There is no end mark: `size`
/// bytes come out.
StreamPtr openShrink(StreamPtr packed, std::uint64_t size, const CodecParams& params = {});

}
