#pragma once

#include "engine/formats/archive.h"

namespace vantoro::sevenzip {

/// A Windows installer package as the files that it installs: its cabinets, in it or beside it, with the names and
/// folders of its database. A package that installs no files opens as the streams in it.
Result<ArchivePtr> openMsi(SourcePtr source, const OpenContext& context);

}
