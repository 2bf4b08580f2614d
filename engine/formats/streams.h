#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// Compressed files with one stream in them, in order of trial.
std::span<const StreamFormatRow> streamRows();

}
