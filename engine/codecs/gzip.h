#pragma once

#include "engine/codecs/codec.h"

#include <string>

namespace vantoro {

/// What the header of a gzip member says (RFC 1952).
struct GzipHeader {
    std::string name; ///< raw bytes, ISO Latin 1 by the RFC and anything in practice; empty when not stored
    std::uint32_t modified = 0; ///< seconds since 1970; 0: not stored
};

/// Reads a member's header; `in` stands behind it then.
Result<GzipHeader> readGzipHeader(BufferedInput& in);

/// All members one after another. CRC-32 and size of each are verified; zeros after the last one are padding.
Result<StreamPtr> openGzip(StreamPtr packed, const CodecParams& params = {});

}
