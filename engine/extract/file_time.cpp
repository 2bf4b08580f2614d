#include "engine/extract/file_time.h"

#include <algorithm>

namespace vantoro {

namespace {
constexpr std::int64_t kLastSecond = 4'354'819'199; // 2107-12-31 23:59:59, the end of DOS dates
}

std::optional<timespec> FileClock::toFileTime(const Timestamp& time)
{
    if (!time.isSet)
        return std::nullopt;
    const auto clamped = std::clamp<std::int64_t>(time.seconds, 0, kLastSecond);
    const auto seconds = time.isLocal ? std::clamp<std::int64_t>(m_clock.toUtc(clamped), 0, kLastSecond) : clamped;
    const bool isExact = seconds == time.seconds || time.isLocal;
    return timespec{static_cast<time_t>(seconds),
                    isExact ? static_cast<long>(std::min(time.nanoseconds, 999'999'999U)) : 0};
}

}
