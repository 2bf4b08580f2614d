#pragma once

#include "engine/codecs/codec.h"

namespace vantoro {

/// A file that zisofs compressed: a 16-byte header, the positions of all blocks, and the blocks, each a zlib stream of
/// its own or nothing at all for a block of zeros. `size` is what the directory says of the decoded file; the header
/// must agree. Source of the format: zisofs-tools and the Linux kernel's documentation of isofs.
Result<StreamPtr> openZisofs(SourcePtr packed, std::uint64_t size, CancelToken cancel);

}
