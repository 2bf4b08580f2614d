#pragma once

#include "engine/formats/archive.h"
#include "engine/formats/local_time.h"

#include <optional>

#include <time.h>

namespace vantoro {

/// Dates of entries as the file system takes them. One per thread.
class FileClock {
public:
    /// Nothing when the date is not set. Outside 1970 to 2107 it is clamped.
    std::optional<timespec> toFileTime(const Timestamp& time);

private:
    LocalClock m_clock;
};

}
