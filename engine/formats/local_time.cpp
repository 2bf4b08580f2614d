#include "engine/formats/local_time.h"

#include <ctime>

namespace vantoro {

namespace {
constexpr std::int64_t kQuarterHour = 900; // zones change at quarters of hours
}

std::int64_t LocalClock::toUtc(std::int64_t local)
{
    const auto number = local / kQuarterHour;
    auto& quarter = m_quarters[static_cast<std::uint64_t>(number) % m_quarters.size()];
    if (quarter.number != number) {
        const auto start = static_cast<std::time_t>(number * kQuarterHour);
        std::tm parts{};
        ::gmtime_r(&start, &parts); // the fields as the clock showed them
        parts.tm_isdst = -1;
        quarter = {number, static_cast<std::int64_t>(::mktime(&parts)) - start};
    }
    return local + quarter.offset;
}

}
