#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// tar in the dialects of Unix V7, POSIX (ustar, pax), GNU and star, from a file or out of a stream.
extern const FormatRow kTarFormat;

}
