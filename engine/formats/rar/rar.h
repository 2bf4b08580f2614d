#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// Rar 1.4 to 7, volumes and self-extractors included.
extern const FormatRow kRarFormat;

}
