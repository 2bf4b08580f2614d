#pragma once

#include <array>
#include <cstdint>

namespace vantoro {

/// From the clock on the wall here, counted as if it were UTC, to UTC. One per thread: keeps the offsets of this
/// machine's zone, which are dear to ask for.
class LocalClock {
public:
    std::int64_t toUtc(std::int64_t local);

private:
    struct Quarter {
        std::int64_t number = -1;
        std::int64_t offset = 0;
    };
    std::array<Quarter, 64> m_quarters;
};

}
