#pragma once

#include "engine/io/bytes.h"

namespace vantoro {

/// Fills `into` from a file's `position` on; fewer bytes only at its end.
Result<std::size_t> readFileAt(int file, std::uint64_t position, Bytes into);

}
