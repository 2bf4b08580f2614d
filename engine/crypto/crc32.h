#pragma once

#include "engine/io/bytes.h"

namespace vantoro {

/// CRC-32 (IEEE 802.3, as zip, gzip and 7z use it), continued from `crc`; 0 starts.
std::uint32_t crc32(std::uint32_t crc, ConstBytes bytes);
/// Adler-32 (RFC 1950), continued from `adler`; 1 starts.
std::uint32_t adler32(std::uint32_t adler, ConstBytes bytes);

}
