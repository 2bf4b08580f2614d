#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// All frames of an .lz4 file, the legacy format and skippable frames among them; stored checksums are verified.
Result<StreamPtr> openLz4(StreamPtr packed, const CodecParams& params = {});

}
