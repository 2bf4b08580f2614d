#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// ARJ's method 4: LZ77 with lengths and distances in unary-prefixed classes, no tables. Ends after `unpackedSize`
/// bytes.
StreamPtr openArjFastest(StreamPtr packed, std::uint64_t unpackedSize);

}
