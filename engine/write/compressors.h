#pragma once

#include "engine/io/stream.h"
#include "engine/write/options.h"

namespace vantoro {

/// A sink that compresses into `out`, on `threads` threads where the method allows. `method`: "gz", "bz2", "xz", "zst",
/// "lz4"; null when unknown. `expectedSize` in bytes sizes the pieces that are compressed side by side; 0: not known.
Result<std::unique_ptr<ByteSink>> makeCompressor(std::string_view method, ByteSink& out, std::optional<unsigned> level,
                                                 unsigned threads, std::uint64_t expectedSize,
                                                 const CancelToken& cancel);

}
