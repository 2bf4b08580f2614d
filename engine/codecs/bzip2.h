#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// All streams of a .bz2 file one after another; the checksums of blocks and streams are verified. With threads the
/// blocks are decoded side by side.
Result<StreamPtr> openBzip2(StreamPtr packed, const CodecParams& params = {});

}
