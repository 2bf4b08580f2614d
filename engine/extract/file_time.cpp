#include "engine/extract/file_time.h"

#include <algorithm>

namespace vantoro {

namespace {
constexpr std::int64_t kLastSecond = 4'354'819'199; // 2107-12-31 23:59:59, the end of DOS dates
constexpr std::int64_t kQuarterHour = 900; // zones change at quarters of hours
}

std::int64_t FileClock::localToUtc(std::int64_t local)
{
    const auto number = local / kQuarterHour;
    auto& quarter = m_quarters[static_cast<std::size_t>(number) % m_quarters.size()];
    if (quarter.number != number) {
        const auto start = static_cast<time_t>(number * kQuarterHour);
        tm parts{};
        ::gmtime_r(&start, &parts); // the fields as the clock on the wall showed them
        parts.tm_isdst = -1;
        quarter = {number, static_cast<std::int64_t>(::mktime(&parts)) - start};
    }
    return local + quarter.offset;
}

std::optional<timespec> FileClock::toFileTime(const Timestamp& time)
{
    if (!time.isSet)
        return std::nullopt;
    const auto clamped = std::clamp<std::int64_t>(time.seconds, 0, kLastSecond);
    const auto seconds = time.isLocal ? std::clamp<std::int64_t>(localToUtc(clamped), 0, kLastSecond) : clamped;
    const bool isExact = seconds == time.seconds || time.isLocal;
    return timespec{static_cast<time_t>(seconds),
                    isExact ? static_cast<long>(std::min(time.nanoseconds, 999'999'999U)) : 0};
}

}
