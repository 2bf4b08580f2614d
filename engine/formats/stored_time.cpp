#include "engine/formats/stored_time.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace vantoro {

Timestamp fileTime(std::uint64_t ticks)
{
    constexpr std::uint64_t kTicksPerSecond = 10'000'000;
    constexpr std::int64_t kTo1970 = 11'644'473'600;
    if (ticks == 0 || ticks >> 63 != 0)
        return {};
    return {.seconds = static_cast<std::int64_t>(ticks / kTicksPerSecond) - kTo1970,
            .nanoseconds = static_cast<std::uint32_t>(ticks % kTicksPerSecond) * 100,
            .isSet = true};
}

Timestamp dosTime(std::uint32_t stamp)
{
    std::tm calendar{};
    calendar.tm_year = static_cast<int>(stamp >> 25) + 80;
    calendar.tm_mon = static_cast<int>(stamp >> 21 & 15) - 1;
    calendar.tm_mday = static_cast<int>(stamp >> 16 & 31);
    calendar.tm_hour = static_cast<int>(stamp >> 11 & 31);
    calendar.tm_min = static_cast<int>(stamp >> 5 & 63);
    calendar.tm_sec = static_cast<int>(stamp & 31) * 2;
    if (calendar.tm_mon < 0 || calendar.tm_mon > 11 || calendar.tm_mday == 0)
        return {};
    return {.seconds = ::timegm(&calendar), .isSet = true, .isLocal = true};
}

Timestamp nearestDosTime(std::uint32_t stamp)
{
    if (stamp == 0)
        return {};
    using namespace std::chrono;
    const auto month = std::clamp(stamp >> 21 & 15, 1U, 12U);
    const auto day = std::clamp(stamp >> 16 & 31, 1U, 31U);
    year_month_day date{year(static_cast<int>(stamp >> 25) + 1980), std::chrono::month(month), std::chrono::day(day)};
    if (!date.ok())
        date = date.year() / date.month() / last;
    const auto midnight = sys_days(date).time_since_epoch();
    const auto clock = hours(std::min(stamp >> 11 & 31, 23U)) + minutes(std::min(stamp >> 5 & 63, 59U))
        + seconds(std::min((stamp & 31) * 2, 59U));
    return {.seconds = (duration_cast<seconds>(midnight) + clock).count(), .isSet = true, .isLocal = true};
}

}
