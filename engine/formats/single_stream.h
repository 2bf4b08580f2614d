#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// A compressed file that holds no archive, as an archive of one entry: named by its header, or else by the file's
/// name without the extension.
Result<ArchivePtr> openSingleStream(const StreamFormatRow& row, SourcePtr source, const OpenContext& context);

}
