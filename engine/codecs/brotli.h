#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// A Brotli stream (RFC 7932). It has no signature and no checksum.
Result<StreamPtr> openBrotli(StreamPtr packed, const CodecParams& params = {});

}
