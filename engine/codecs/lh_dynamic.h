#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// LHA's -lh2-: LZ77 in a window of 8 KiB with adaptive Huffman codes for lengths and for distances, the latter grown
/// as the window fills. Source of the format: LHa for UNIX's dhuf.c. Ends after `unpackedSize` bytes.
StreamPtr openLhDynamic(StreamPtr packed, std::uint64_t unpackedSize);

}
