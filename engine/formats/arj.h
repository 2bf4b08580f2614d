#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// ARJ archives: methods 0 to 4, garbled entries, sets of volumes. Source of the format: the technical notes of the
/// free arj 3.10.
extern const FormatRow kArjFormat;

}
