#pragma once

#include "engine/codecs/codec.h"
#include "engine/formats/zip/headers.h"

namespace vantoro::zip {

/// Decodes the data of an entry, deciphered before. UnsupportedMethod for what has no decoder here.
/// `size` is the declared one; methods without an end mark stop there.
Result<StreamPtr> openMethod(StreamPtr packed, const DirectoryHeader& header, std::uint64_t size,
                             const CodecParams& params);

/// For imploded data of very old packers that took the shortest match from the window: to be tried when the checksum
/// fails. Null where that makes no difference.
StreamPtr openOldImplode(StreamPtr packed, const DirectoryHeader& header, const CodecParams& params);

}
