#pragma once

#include "engine/io/result.h"

#include <string>
#include <string_view>
#include <vector>

namespace vantoro {

enum class RarNaming : std::uint8_t {
    Letters, ///< x.rar, x.r00 … x.r99, x.s00 …
    Numbers, ///< x.part1.rar, x.part2.rar …
};

/// Names that the volume behind `name` may have, the likeliest first. Empty when there cannot be one.
std::vector<std::string> nextRarVolumes(std::string_view name, RarNaming naming);
/// Names that the first volume of the set of `name` may have, the likeliest first; `name` itself is not among them.
std::vector<std::string> firstRarVolumes(std::string_view name, RarNaming naming);

}
