#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// All frames of a Zstandard stream (RFC 8878), skippable ones passed over; stored checksums are verified.
Result<StreamPtr> openZstd(StreamPtr packed, const CodecParams& params = {});

}
