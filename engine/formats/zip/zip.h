#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// Zip archives with all that is in use: zip64, split sets, self-extractors, both encryptions, every method but a few
/// vendors' own, and what is left of damaged ones. Source of the format: the published .ZIP application note.
extern const FormatRow kZipFormat;

}
