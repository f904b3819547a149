#include "RecentlyUsed.h"
#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <optional>
#include <pugixml.hpp>

namespace quillane::RecentlyUsed {
namespace {

// The digits at the front of `text`, exactly so many, and what must stand behind them.
std::optional<unsigned> takeNumber(std::string_view& text, std::size_t digits, char behind) {
    const auto number = text.substr(0, digits);
    if (number.size() != digits || number.find_first_not_of("0123456789") != std::string_view::npos ||
        text.size() == digits || text[digits] != behind) {
        return std::nullopt;
    }
    unsigned value = 0;
    std::from_chars(number.data(), number.data() + number.size(), value);
    text.remove_prefix(digits + 1);
    return value;
}

std::optional<Date> dayOf(std::string_view& text) {
    const auto year = takeNumber(text, 4, '-');
    const auto month = year ? takeNumber(text, 2, '-') : std::nullopt;
    const auto day = month ? takeNumber(text, 2, 'T') : std::nullopt;
    if (!day) {
        return std::nullopt;
    }
    const auto date =
        std::chrono::year(static_cast<int>(*year)) / std::chrono::month(*month) / std::chrono::day(*day);
    if (!date.ok()) {
        return std::nullopt;
    }
    const auto days = std::chrono::sys_days(date).time_since_epoch().count();
    return Date::fromUnix(static_cast<std::int64_t>(days) * 86'400);
}

// "2026-11-21T08:30:00Z", in UTC; a fraction of any length may follow the seconds, and counts nothing.
std::optional<Date> dateOf(std::string_view text) {
    if (!text.ends_with('Z')) {
        return std::nullopt;
    }
    if (const auto point = text.find('.'); point != std::string_view::npos) {
        const auto fraction = text.substr(point + 1, text.size() - point - 2);
        if (fraction.find_first_not_of("0123456789") != std::string_view::npos) {
            return std::nullopt;
        }
        text = text.substr(0, point + 1);
    }
    const char behind = text.back();
    const auto day = dayOf(text);
    const auto hour = day ? takeNumber(text, 2, ':') : std::nullopt;
    const auto minute = hour ? takeNumber(text, 2, ':') : std::nullopt;
    const auto second = minute ? takeNumber(text, 2, behind) : std::nullopt;
    if (!second || !text.empty() || *hour > 23 || *minute > 59 || *second > 60) {
        return std::nullopt;
    }
    return day->addingSeconds(*hour * 3600.0 + *minute * 60.0 + *second);
}

std::optional<Date> lastUseOf(const pugi::xml_node& bookmark) {
    const auto modified = dateOf(bookmark.attribute("modified").value());
    const auto visited = dateOf(bookmark.attribute("visited").value());
    return std::max(modified, visited); // what is absent is before everything
}

} // namespace

Dates parse(std::string_view text) {
    Dates dates;
    if (text.size() > kMostBytes || static_cast<std::size_t>(std::ranges::count(text, '<')) > kMostTags) {
        return dates;
    }
    pugi::xml_document document;
    // A text that breaks off has its beginning all the same.
    static_cast<void>(
        document.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8));
    for (const auto& bookmark : document.child("xbel").children("bookmark")) {
        const auto url = FileURL::fromAbsoluteString(bookmark.attribute("href").value());
        const auto used = url ? lastUseOf(bookmark) : std::nullopt;
        if (used) {
            auto& date = dates.try_emplace(*url, *used).first->second;
            date = std::max(date, *used);
        }
    }
    return dates;
}

} // namespace quillane::RecentlyUsed
