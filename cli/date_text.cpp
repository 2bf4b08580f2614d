#include "cli/date_text.h"

#include <chrono>
#include <ctime>

namespace vantoro::cli {

namespace {

constexpr std::int64_t kYear10000 = 253'402'300'800;
constexpr std::int64_t kDay = 86'400;

bool isUsual(std::int64_t seconds) { return seconds >= 0 && seconds < kYear10000; }

/// Two digits and what stands behind them.
char* put(char* at, unsigned number, char behind)
{
    *at++ = static_cast<char>('0' + number / 10);
    *at++ = static_cast<char>('0' + number % 10);
    *at++ = behind;
    return at;
}

/// "2026-03-01", then `between`, then "12:30:05Z".
void write(char* at, std::int64_t seconds, char between)
{
    const std::chrono::year_month_day date(std::chrono::sys_days(std::chrono::days(seconds / kDay)));
    const auto year = static_cast<unsigned>(static_cast<int>(date.year()));
    const auto inDay = static_cast<unsigned>(seconds % kDay);
    at = put(at, year / 100, ' ') - 1;
    at = put(at, year % 100, '-');
    at = put(at, static_cast<unsigned>(date.month()), '-');
    at = put(at, static_cast<unsigned>(date.day()), between);
    at = put(at, inDay / 3600, ':');
    at = put(at, inDay / 60 % 60, ':');
    put(at, inDay % 60, 'Z');
}

}

std::int64_t DateText::toUtc(const Timestamp& time)
{
    return time.isLocal && isUsual(time.seconds) ? m_clock.toUtc(time.seconds) : time.seconds;
}

std::string_view DateText::rare(std::int64_t seconds, const char* format)
{
    const auto moment = static_cast<std::time_t>(seconds);
    std::tm fields{};
    ::gmtime_r(&moment, &fields);
    return {m_text.data(), std::strftime(m_text.data(), m_text.size(), format, &fields)};
}

std::string_view DateText::minutes(const Timestamp& time)
{
    if (!time.isSet)
        return {};
    const auto seconds = toUtc(time);
    if (!isUsual(seconds))
        return rare(seconds, "%Y-%m-%d %H:%M");
    write(m_text.data(), seconds, ' ');
    return {m_text.data(), 16};
}

std::string_view DateText::seconds(const Timestamp& time)
{
    if (!time.isSet)
        return {};
    const auto seconds = toUtc(time);
    if (!isUsual(seconds))
        return rare(seconds, "%Y-%m-%dT%H:%M:%SZ");
    write(m_text.data(), seconds, 'T');
    return {m_text.data(), 20};
}

}
