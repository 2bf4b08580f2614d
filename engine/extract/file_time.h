#pragma once

#include "engine/formats/archive.h"

#include <array>
#include <optional>

#include <time.h>

namespace vantoro {

/// Dates of entries as the file system takes them. One per thread: keeps the offsets of this machine's zone, which are
/// dear to ask for.
class FileClock {
public:
    /// Nothing when the date is not set. Outside 1970 to 2107 it is clamped.
    std::optional<timespec> toFileTime(const Timestamp& time);

private:
    std::int64_t localToUtc(std::int64_t local);

    struct Quarter {
        std::int64_t number = -1;
        std::int64_t offset = 0;
    };
    std::array<Quarter, 64> m_quarters;
};

}
