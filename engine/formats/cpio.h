#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// cpio archives of the new ASCII kinds (with and without sums), the old ASCII kind and the binary one in either byte
/// order; from a stream too, as in RPM packages.
extern const FormatRow kCpioFormat;

}
