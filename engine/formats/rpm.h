#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// RPM packages: a lead, two headers, and a compressed cpio archive, which is what the stream delivers. Source of the
/// format: "RPM Package File Structure" of the Linux Standard Base.
extern const StreamFormatRow kRpmFormat;

}
