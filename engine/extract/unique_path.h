#pragma once

#include "engine/io/result.h"

#include <string>

namespace vantoro {

/// `wanted` if free, else "name 1.ext", "name 2.ext" … beside it. A hint: the rename decides.
std::string uniquePath(const std::string& wanted);
/// Renames without overwriting; takes the next free name when `wanted` is taken meanwhile. Returns the final path.
Result<std::string> moveToUniquePath(const std::string& from, const std::string& wanted);

}
