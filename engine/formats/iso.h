#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// ISO 9660 volumes with Rock Ridge, Joliet, zisofs and files of several extents. Source of the format: ECMA-119,
/// IEEE P1281/P1282, Joliet. A volume that has UDF as well is only Likely this: its ISO tree may hold a note alone.
extern const FormatRow kIsoFormat;

}
