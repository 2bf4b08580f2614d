#pragma once

#include "engine/io/bytes.h"

#include <vector>

namespace vantoro {

/// Makes a complete deflate stream the front part of a longer one: its last block is no longer the last, and it ends on
/// a byte border, with an empty stored block as a sync flush does (RFC 1951, 3.2). So pieces that were compressed
/// apart, by a library that knows no flush, can stand behind each other.
Result<void> makeFrontPiece(std::vector<std::byte>& stream);

}
