#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// Raw deflate (RFC 1951); what follows the last block is not read.
Result<StreamPtr> openDeflate(StreamPtr packed, const CodecParams& params = {});
/// Deflate in a zlib wrapper (RFC 1950); its Adler-32 is verified.
Result<StreamPtr> openZlib(StreamPtr packed, const CodecParams& params = {});

}
