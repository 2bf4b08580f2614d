#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// 7z with the methods that nearly all archives have: LZMA and LZMA2, with one converter or none, and stored data.
/// Refuses everything else with UnsupportedFeature; 7-Zip's library reads it.
extern const FormatRow kSevenZipFormat;

}
