#pragma once

#include "engine/formats/archive.h"
#include "engine/formats/local_time.h"

#include <array>
#include <string_view>

namespace vantoro::cli {

/// Dates of a listing in UTC, made without the C library, which takes longer for one than the rest of the line does.
class DateText {
public:
    /// "2026-03-01 12:30"; empty when there is none. Valid until the next call, as is the other's.
    std::string_view minutes(const Timestamp& time);
    /// "2026-03-01T12:30:05Z"
    std::string_view seconds(const Timestamp& time);

private:
    std::string_view rare(std::int64_t seconds, const char* format);
    std::int64_t toUtc(const Timestamp& time);

    LocalClock m_clock;
    std::array<char, 64> m_text{};
};

}
