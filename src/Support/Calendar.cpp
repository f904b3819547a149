#include "Calendar.h"
#include <array>
#include <cmath>
#include <cstdlib>
#include <mutex>
#include <unicode/gregocal.h>
#include <unicode/reldatefmt.h>
#include <unicode/timezone.h>
#include <utility>

namespace quillane {

// The calendar that every call copies, since asking a calendar changes it. Never asked itself.
struct Calendar::Zone {
    std::unique_ptr<const icu::GregorianCalendar> prototype;
};

namespace {

struct Unit {
    UCalendarDateFields field;
    URelativeDateTimeUnit word;
};

// From the largest to the smallest: a span is told in the first that is not zero.
constexpr std::array<Unit, 7> kUnits = {{{UCAL_YEAR, UDAT_REL_UNIT_YEAR},
                                         {UCAL_MONTH, UDAT_REL_UNIT_MONTH},
                                         {UCAL_WEEK_OF_MONTH, UDAT_REL_UNIT_WEEK},
                                         {UCAL_DATE, UDAT_REL_UNIT_DAY},
                                         {UCAL_HOUR, UDAT_REL_UNIT_HOUR},
                                         {UCAL_MINUTE, UDAT_REL_UNIT_MINUTE},
                                         {UCAL_SECOND, UDAT_REL_UNIT_SECOND}}};
constexpr std::size_t kDay = 3;
constexpr std::size_t kHour = 4;
constexpr std::size_t kSecond = 6;

// A number of one unit, negative for the past.
struct Amount {
    std::size_t unit = kSecond;
    int value = 0;
};

// The locale and calendar data are part of the library's own files: without them nothing can be shown.
void require(UErrorCode status) {
    if (U_FAILURE(status)) {
        std::abort();
    }
}

// Milliseconds since 1970, whole: finer fractions would differ by the rounding of sums alone. Dates out of
// the range in which whole milliseconds are exact are moved to its ends, NaN to the earlier.
UDate toUDate(Date date) {
    constexpr double kLimit = 8.64e15;
    const double milliseconds = std::round(date.secondsSince1970() * 1000.0);
    if (!(milliseconds >= -kLimit)) {
        return -kLimit;
    }
    return std::min(milliseconds, kLimit);
}

void setTo(icu::Calendar& calendar, UDate date) {
    UErrorCode status = U_ZERO_ERROR;
    calendar.setTime(date, status);
}

// Whole steps of the field from where the calendar stands to `to`; leaves the calendar at the last of them.
int stepsTo(icu::Calendar& calendar, UDate to, UCalendarDateFields field) {
    UErrorCode status = U_ZERO_ERROR;
    const int steps = calendar.fieldDifference(to, field, status);
    return U_SUCCESS(status) ? steps : 0;
}

UDate moved(icu::Calendar& calendar, UDate date, UCalendarDateFields field, int amount) {
    UErrorCode status = U_ZERO_ERROR;
    calendar.setTime(date, status);
    calendar.add(field, amount, status);
    const UDate result = calendar.getTime(status);
    return U_SUCCESS(status) ? result : date;
}

// The largest unit of which the span holds a whole one; leaves the calendar behind these.
Amount largestUnit(icu::Calendar& calendar, UDate from, UDate to) {
    setTo(calendar, from);
    for (std::size_t i = 0; i < kUnits.size(); ++i) {
        if (const int steps = stepsTo(calendar, to, kUnits[i].field); steps != 0) {
            return {i, steps};
        }
    }
    return {};
}

// A span of less than a day, rounded to its largest unit by the next smaller one, in which `remainder` is
// what is left. What rounds up to a whole larger unit is told in that: 60 minutes are an hour, 24 hours a day.
Amount roundedTime(icu::Calendar& calendar, Amount amount, int remainder, UDate date) {
    if (std::abs(remainder) * 2 >= 60) {
        amount.value += amount.value < 0 ? -1 : 1;
    }
    const UDate reference = moved(calendar, date, kUnits[amount.unit].field, -amount.value);
    const Amount again = largestUnit(calendar, reference, date);
    return again.unit == amount.unit ? amount : again;
}

// The first moment of the day, week, month or year that holds `date`.
UDate startOf(icu::Calendar& calendar, std::size_t unit, UDate date) {
    UErrorCode status = U_ZERO_ERROR;
    calendar.setTime(date, status);
    if (kUnits[unit].field == UCAL_WEEK_OF_MONTH) {
        const int weekday = calendar.get(UCAL_DAY_OF_WEEK, status);
        const int first = calendar.getFirstDayOfWeek(status);
        calendar.add(UCAL_DATE, -((weekday - first + 7) % 7), status);
    } else if (unit < kDay) {
        calendar.set(UCAL_DATE, 1);
    }
    if (kUnits[unit].field == UCAL_YEAR) {
        calendar.set(UCAL_MONTH, UCAL_JANUARY);
    }
    for (const auto field : {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND}) {
        calendar.set(field, 0);
    }
    const UDate start = calendar.getTime(status);
    return U_SUCCESS(status) ? start : date;
}

// The span to `date` from the near edge of the reference's own day, week, month or year, so that one week
// before reads "last week" on whatever weekday either of them falls.
Amount alignedToCalendar(icu::Calendar& calendar, Amount amount, UDate reference, UDate date) {
    UDate edge = startOf(calendar, amount.unit, reference);
    if (amount.value < 0) {
        const UDate next = moved(calendar, reference, kUnits[amount.unit].field, 1);
        edge = startOf(calendar, amount.unit, next) - 1000.0;
    }
    return largestUnit(calendar, edge, date);
}

Amount describedAmount(icu::Calendar& calendar, UDate date, UDate now) {
    const UDate reference = date + std::round((now - date) / 1000.0) * 1000.0;
    const Amount amount = largestUnit(calendar, reference, date);
    if (amount.unit < kHour) {
        return alignedToCalendar(calendar, amount, reference, date);
    }
    const int remainder = amount.unit == kSecond ? 0 : stepsTo(calendar, date, kUnits[amount.unit + 1].field);
    return roundedTime(calendar, amount, remainder, date);
}

std::unique_ptr<const icu::GregorianCalendar> makePrototype(std::unique_ptr<icu::TimeZone> zone) {
    UErrorCode status = U_ZERO_ERROR;
    // The locale brings the weeks that begin on Sunday.
    auto calendar = std::make_unique<icu::GregorianCalendar>(zone.release(), icu::Locale::getUS(), status);
    require(status);
    return calendar;
}

// The library's default zone is that of the first time anybody asked. Finding it anew is not safe from two
// threads at once.
std::unique_ptr<icu::TimeZone> zoneOfTheMachine() {
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    return std::unique_ptr<icu::TimeZone>(icu::TimeZone::detectHostTimeZone());
}

std::unique_ptr<icu::TimeZone> zoneNamed(const std::string& name) {
    return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
}

const icu::RelativeDateTimeFormatter& relativeFormatter() {
    static const auto* const formatter = [] {
        UErrorCode status = U_ZERO_ERROR;
        const auto* made = new icu::RelativeDateTimeFormatter(icu::Locale::getUS(), nullptr, UDAT_STYLE_LONG,
                                                              UDISPCTX_CAPITALIZATION_NONE, status);
        require(status);
        return made; // never destroyed: any thread may still use it while the process ends
    }();
    return *formatter;
}

} // namespace

Calendar::Calendar(std::shared_ptr<const Zone> zone)
    : m_zone(std::move(zone)) {}

Calendar::Calendar()
    : Calendar(std::make_shared<const Zone>(Zone{makePrototype(zoneOfTheMachine())})) {}

Calendar::Calendar(const std::string& timeZone)
    : Calendar(std::make_shared<const Zone>(Zone{makePrototype(zoneNamed(timeZone))})) {}

std::optional<Calendar> Calendar::inZone(const std::string& timeZone) {
    auto zone = zoneNamed(timeZone);
    if (*zone == icu::TimeZone::getUnknown()) {
        return std::nullopt;
    }
    return Calendar(std::make_shared<const Zone>(Zone{makePrototype(std::move(zone))}));
}

Calendar::~Calendar() = default;
Calendar::Calendar(const Calendar&) = default;
Calendar& Calendar::operator=(const Calendar&) = default;

int Calendar::daysBetween(Date from, Date to) const {
    const std::unique_ptr<icu::Calendar> calendar(m_zone->prototype->clone());
    setTo(*calendar, toUDate(from));
    return stepsTo(*calendar, toUDate(to), UCAL_DATE);
}

std::string Calendar::relativeDescription(Date date, Date now) const {
    const std::unique_ptr<icu::Calendar> calendar(m_zone->prototype->clone());
    const Amount amount = describedAmount(*calendar, toUDate(date), toUDate(now));
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString words;
    relativeFormatter().format(amount.value, kUnits[amount.unit].word, words, status);
    std::string text;
    return words.toUTF8String(text);
}

} // namespace quillane
