#pragma once
#include "Date.h"
#include <chrono>

namespace quillane {

// A date and time of day in UTC, in which the tests write their tables.
inline Date utc(int year, unsigned month, unsigned day, int hour = 0, int minute = 0, double second = 0) {
    const std::chrono::sys_days days =
        std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
    return Date::fromUnix(std::chrono::seconds(days.time_since_epoch()).count())
        .addingSeconds(hour * 3600 + minute * 60 + second);
}

} // namespace quillane
