#pragma once

#include "engine/codecs/xz.h"

namespace vantoro {

/// Decodes the blocks of an .xz file side by side. `packed`: the file from its start; `blocks`: of its index, all
/// small.
Result<StreamPtr> openXzBlocks(StreamPtr packed, const CodecParams& params, XzBlocks blocks);

}
