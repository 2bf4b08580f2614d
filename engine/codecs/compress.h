#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// A .Z file of Unix compress: LZW with codes of 9 to 16 bits, with or without a clear code. No checksum, and its end
/// is the input's end.
Result<StreamPtr> openCompress(StreamPtr packed, const CodecParams& params = {});

}
