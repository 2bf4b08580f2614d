#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// What is read by libarchive, for the registry: cpio, ar, warc, and rar where nothing better claims it.
std::span<const FormatRow> libarchiveRows();

}
