#pragma once

#include "engine/backends/libarchive_session.h"

namespace vantoro {

/// An archive read by libarchive with one format and no filter enabled: compression around it is the codec layer's
/// business. `format` lives as long as the program.
Result<ArchivePtr> openWithLibarchive(const LibarchiveFormat& format, SourcePtr source, const OpenContext& context);
Result<ArchivePtr> openWithLibarchive(const LibarchiveFormat& format, StreamFactory stream, const OpenContext& context);

}
