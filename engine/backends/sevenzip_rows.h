#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// The formats that are read through 7-Zip's plug-in library, in order of trial.
std::span<const FormatRow> sevenZipRows();
/// Those that other readers know better: to stand behind theirs in the table.
std::span<const FormatRow> sevenZipFallbackRows();

}
