#pragma once

#include "engine/formats/rar/scan.h"

namespace vantoro {

/// Reads the headers of all volumes of the set that `source` belongs to, from the first volume that is there on.
/// NotAnArchive when there is no marker. The comment, still packed, goes to `firstVolume`.
Result<RarCatalog> openRarSet(SourcePtr source, const OpenContext& context, RarKeyRing& keys,
                              RarVolumeFacts& firstVolume);

}
