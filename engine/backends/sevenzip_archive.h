#pragma once

#include "engine/backends/sevenzip_open.h"

namespace vantoro::sevenzip {

/// Opens `source` with exactly this handler of the plug-in library. A disk image that holds one partition or file
/// system is opened down to it.
Result<ArchivePtr> openArchive(const Format& format, SourcePtr source, const OpenContext& context);

/// The file system or partition table that a disk or partition starts with; null when none is known.
const Format* findImageFormat(const ByteSource& source);

}
