#pragma once

#include "engine/formats/zip/entry_reader.h"

namespace vantoro::zip {

/// Decodes the chosen entries, ascending, on as many threads as there are lanes and work for. A lane gets runs of
/// neighbouring entries of one folder, so that two threads seldom create files in the same one.
Result<void> readParallel(const ReadShared& shared, std::span<const std::uint64_t> chosen, Lanes& lanes);

}
