#include "QueryTime.h"
#include <algorithm>
#include <charconv>
#include <cmath>
#include <ctime>

namespace quillane {
namespace {

constexpr std::string_view kPrefix = "$time.";
constexpr int kFarthest = 1'000'000; // days, weeks, months or years away from now; beyond it calendars end

// All of `text` as a whole number.
template <class Integer>
std::optional<Integer> integer(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    Integer value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<Date> dateFrom(std::tm parts) {
    parts.tm_hour = 0;
    parts.tm_min = 0;
    parts.tm_sec = 0;
    parts.tm_isdst = -1;
    const std::time_t seconds = std::mktime(&parts);
    if (seconds == static_cast<std::time_t>(-1)) {
        return std::nullopt;
    }
    return Date::fromUnix(seconds);
}

std::optional<Date> beginningOf(std::string_view period, int offset, Date now) {
    const auto seconds = static_cast<std::time_t>(std::floor(now.secondsSince1970()));
    std::tm parts{};
    if (::localtime_r(&seconds, &parts) == nullptr) {
        return std::nullopt;
    }
    if (period == "today" || period == "yesterday") {
        parts.tm_mday += offset - (period == "yesterday" ? 1 : 0);
    } else if (period == "this_week") {
        parts.tm_mday += 7 * offset - parts.tm_wday;
    } else if (period == "this_month") {
        parts.tm_mday = 1;
        parts.tm_mon += offset;
    } else if (period == "this_year") {
        parts.tm_mday = 1;
        parts.tm_mon = 0;
        parts.tm_year += offset;
    } else {
        return std::nullopt;
    }
    return dateFrom(parts);
}

// Days from 1970-01-01 to a date of the Gregorian calendar.
std::int64_t daysFromCivil(std::int64_t year, std::int64_t month, std::int64_t day) {
    // Years begin in March here, so that the day that a leap year adds is the last one.
    const std::int64_t shifted = month <= 2 ? year - 1 : year;
    const std::int64_t era = (shifted >= 0 ? shifted : shifted - 399) / 400;
    const std::int64_t yearOfEra = shifted - era * 400;
    const std::int64_t dayOfYear = (153 * ((month + 9) % 12) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

int daysIn(int month, int year) {
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 ? (leap ? 29 : 28) : (month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31);
}

// The number of `length` digits at the front of `text`, which it takes off together with `separator` behind.
std::optional<int> takeNumber(std::string_view& text, std::size_t length, char separator) {
    const auto digits = text.substr(0, length);
    if (digits.size() != length || digits.find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    text.remove_prefix(length);
    if (separator != '\0') {
        if (!text.starts_with(separator)) {
            return std::nullopt;
        }
        text.remove_prefix(1);
    }
    return integer<int>(digits);
}

std::optional<Date> isoTime(std::string_view text) {
    const auto year = takeNumber(text, 4, '-');
    const auto month = year ? takeNumber(text, 2, '-') : std::nullopt;
    const auto day = month ? takeNumber(text, 2, '\0') : std::nullopt;
    if (!day || *month < 1 || *month > 12 || *day < 1 || *day > daysIn(*month, *year)) {
        return std::nullopt;
    }
    std::int64_t seconds = daysFromCivil(*year, *month, *day) * 86400;
    if (text.starts_with('T')) {
        text.remove_prefix(1);
        const auto hour = takeNumber(text, 2, ':');
        const auto minute = hour ? takeNumber(text, 2, ':') : std::nullopt;
        const auto second = minute ? takeNumber(text, 2, '\0') : std::nullopt;
        if (!second || *hour > 23 || *minute > 59 || *second > 60) {
            return std::nullopt;
        }
        seconds += *hour * 3600 + *minute * 60 + *second;
        if (text.starts_with('Z')) {
            text.remove_prefix(1);
        }
    }
    return text.empty() ? std::optional(Date::fromUnix(seconds)) : std::nullopt;
}

} // namespace

std::optional<Date> queryTime(std::string_view text, Date now) {
    if (!text.starts_with(kPrefix)) {
        return std::nullopt;
    }
    text.remove_prefix(kPrefix.size());
    const auto bracket = std::min(text.find('('), text.size());
    const auto name = text.substr(0, bracket);
    auto argument = text.substr(bracket);
    if (!argument.empty()) {
        if (!argument.ends_with(')')) {
            return std::nullopt;
        }
        argument = argument.substr(1, argument.size() - 2);
    }
    if (name == "iso") {
        return isoTime(argument);
    }
    const auto offset = argument.empty() ? std::optional<std::int64_t>(0) : integer<std::int64_t>(argument);
    if (!offset) {
        return std::nullopt;
    }
    if (name == "now") {
        return now.addingSeconds(static_cast<double>(*offset));
    }
    if (*offset < -kFarthest || *offset > kFarthest) {
        return std::nullopt;
    }
    return beginningOf(name, static_cast<int>(*offset), now);
}

} // namespace quillane
