#pragma once

#include "engine/formats/zip/directory.h"

namespace vantoro::zip {

/// Puts a directory together from the local headers, and the directory headers that are left, in one pass over the
/// source. For archives whose directory is missing or damaged. Never empty: NotAnArchive when nothing is found.
Result<Directory> salvage(const ByteSource& source, const Limits& limits, const CancelToken& cancel);

/// Whether a local header could be one: for signatures that may be there by chance.
bool isPlausible(const LocalHeader& header);

}
