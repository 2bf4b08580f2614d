#pragma once

#include "engine/io/bytes.h"

namespace vantoro {

/// CRC-16/ARC (polynomial 8005, reflected), continued from `crc`; 0 starts. "123456789" gives BB3D.
std::uint16_t crc16Arc(std::uint16_t crc, ConstBytes bytes);

}
