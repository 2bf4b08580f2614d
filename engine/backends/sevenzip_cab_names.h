#pragma once

#include "engine/io/source.h"

#include <string>
#include <unordered_map>

namespace vantoro::sevenzip {

struct CabName {
    std::string bytes; ///< as stored
    bool isUtf8 = false; ///< declared so
};

/// The library hands out cabinet names with each 0x5C made '/', be it a separator or the second byte of a Japanese or
/// Chinese character, and does not say which names are declared UTF-8. This reads them from the file tables of the
/// cabinets again, by the name that the library gives.
using CabNames = std::unordered_map<std::string, CabName>;
CabNames readCabNames(std::span<const SourcePtr> cabinets);

}
