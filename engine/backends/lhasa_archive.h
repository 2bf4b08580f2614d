#pragma once

#include "engine/formats/format.h"

namespace vantoro {

/// LHA, LArc and PMarc archives and LHA's self-extractors: headers read by ourselves, so that names keep their bytes,
/// data decoded by liblhasa.
std::span<const FormatRow> lhasaRows();

}
