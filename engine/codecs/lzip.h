#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// All members of a .lz file (lzip 1.4 and later); CRC-32 and sizes of each are verified.
Result<StreamPtr> openLzip(StreamPtr packed, const CodecParams& params = {});

}
