#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// Decodes one block of LZO1X; `out` must be as long as the block decoded is, SizeMismatch otherwise.
Result<void> decodeLzo1x(ConstBytes packed, Bytes out);

/// All members of an .lzo file as lzop writes it; stored checksums are verified.
Result<StreamPtr> openLzop(StreamPtr packed, const CodecParams& params = {});

}
