#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// What is read by libarchive, for the registry: ar, xar and warc.
std::span<const FormatRow> libarchiveRows();

/// Loads what libarchive needs from the file system (the locale), for a process that is about to lose sight of it.
void preloadLibarchive();

}
