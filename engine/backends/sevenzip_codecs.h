#pragma once

#include "engine/backends/sevenzip_com.h"

namespace vantoro::sevenzip {

/// Gives a handler the methods that the library lacks and that 7z archives are met with: Zstandard, LZ4 and Brotli.
/// Handlers that take no foreign methods stay as they are.
void addOwnCodecs(const Ref<InArchive>& handler);

}
