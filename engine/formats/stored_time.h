#pragma once

#include "engine/formats/archive.h"

namespace vantoro {

/// A Windows FILETIME: 100 ns since 1601. 0 and what is beyond all years stands for none.
Timestamp fileTime(std::uint64_t ticks);
/// A DOS timestamp, the date in the high half: local time. Nothing where it is no date.
Timestamp dosTime(std::uint32_t stamp);
/// The date nearest to it, for formats whose packers write odd ones. 0 stands for none.
Timestamp nearestDosTime(std::uint32_t stamp);

}
