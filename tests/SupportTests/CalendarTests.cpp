#include "Calendar.h"
#include "CivilDate.h"
#include <limits>

namespace quillane {
namespace {

// Clock times of New York in 2024: standard time until March 10 at 2:00 and again from November 3 at 2:00.
Date standardTime(unsigned month, unsigned day, int hour, int minute = 0, double second = 0) {
    return utc(2024, month, day, hour + 5, minute, second);
}

Date daylightTime(unsigned month, unsigned day, int hour, int minute = 0, double second = 0) {
    return utc(2024, month, day, hour + 4, minute, second);
}

TEST(DaysBetween, WholeStepsOfTheSameClockTimeCount) {
    struct Row {
        std::string what;
        Date from;
        Date to;
        int days;
    };
    const std::vector<Row> rows = {
        {"a day", daylightTime(5, 14, 12), daylightTime(5, 15, 12), 1},
        {"a second less", daylightTime(5, 14, 12, 0, 1), daylightTime(5, 15, 12), 0},
        {"over midnight only", daylightTime(5, 14, 23, 59, 59), daylightTime(5, 15, 0, 0, 1), 0},
        {"nearly two days", daylightTime(5, 14, 0, 0, 1), daylightTime(5, 15, 23, 59, 59), 1},
        {"daylight time begins", standardTime(3, 9, 12), daylightTime(3, 10, 12), 1},
        {"one second short of that", standardTime(3, 9, 12), daylightTime(3, 10, 11, 59, 59), 0},
        {"the short day itself", standardTime(3, 10, 0), daylightTime(3, 11, 0), 1},
        {"2:30 does not exist, before 3:30", standardTime(3, 9, 2, 30), daylightTime(3, 10, 3), 0},
        {"2:30 does not exist, at 3:30", standardTime(3, 9, 2, 30), daylightTime(3, 10, 3, 30), 1},
        {"24 hours when daylight time ends", daylightTime(11, 2, 12), standardTime(11, 3, 11), 0},
        {"25 hours when daylight time ends", daylightTime(11, 2, 12), standardTime(11, 3, 12), 1},
        {"1:30 the first time", daylightTime(11, 2, 1, 30), daylightTime(11, 3, 1, 30), 1},
        {"1:30 the second time", daylightTime(11, 2, 1, 30), standardTime(11, 3, 1, 30), 1},
        {"backwards", daylightTime(5, 15, 12), daylightTime(5, 14, 12), -1},
        {"backwards, a second less", daylightTime(5, 15, 12), daylightTime(5, 14, 12, 0, 1), 0},
        {"half a year", standardTime(1, 31, 12), daylightTime(7, 29, 12), 180},
        {"half a year less a second", standardTime(1, 31, 12), daylightTime(7, 29, 11, 59, 59), 179},
        {"fractions count", daylightTime(5, 14, 12, 0, 0.5), daylightTime(5, 15, 12), 0},
        {"from the earliest date", Date::distantPast(), daylightTime(5, 14, 12), 739'021},
        {"no time at all", daylightTime(5, 14, 12), daylightTime(5, 14, 12), 0},
    };
    const Calendar newYork("America/New_York");
    for (const auto& row : rows) {
        EXPECT_EQ(newYork.daysBetween(row.from, row.to), row.days) << row.what;
    }
}

TEST(DaysBetween, TheTimeZoneDecides) {
    const Date from = standardTime(3, 9, 12);
    const Date to = daylightTime(3, 10, 12);
    EXPECT_EQ(Calendar("GMT").daysBetween(from, to), 0);
    EXPECT_EQ(Calendar("America/New_York").daysBetween(from, to), 1);
}

// Dates at which a sum in milliseconds is not exact, so that the last day would be missed by a hair.
TEST(DaysBetween, WholeDaysAreWholeWhateverTheFraction) {
    const Calendar calendar("GMT");
    for (const auto& [seconds, days] : std::vector<std::pair<double, int>>{
             {86110922.325101495, 395}, {104062602.77205104, 266}, {64797451.166495442, 372}}) {
        const Date from = {seconds};
        EXPECT_EQ(calendar.daysBetween(from, from.addingSeconds(86'400.0 * days)), days) << seconds;
    }
}

TEST(DaysBetween, DatesOutOfAllRangesAreSurvived) {
    const Calendar calendar("America/New_York");
    const double most = std::numeric_limits<double>::infinity();
    EXPECT_GT(calendar.daysBetween(Date{-most}, Date{most}), 190'000'000);
    EXPECT_LT(calendar.daysBetween(Date{most}, Date{}), -90'000'000);
    EXPECT_GT(calendar.daysBetween(Date{std::numeric_limits<double>::quiet_NaN()}, Date{}), 90'000'000);
    EXPECT_GT(calendar.daysBetween(Date::fromUnix(std::numeric_limits<std::int64_t>::min() / 2), Date{}),
              90'000'000);
}

TEST(Calendar, AnUnknownTimeZoneIsGMT) {
    const Date from = standardTime(3, 9, 12);
    const Date to = daylightTime(3, 10, 12);
    for (const char* name : {"Atlantis/Nowhere", "", "\xff\xfe"}) {
        EXPECT_EQ(Calendar(name).daysBetween(from, to), 0) << name;
    }
}

TEST(Calendar, ACopyTellsTheSame) {
    Calendar copy("GMT");
    {
        const Calendar original("America/New_York");
        copy = original;
    }
    EXPECT_EQ(copy.daysBetween(standardTime(3, 9, 12), daylightTime(3, 10, 12)), 1);
}

TEST(Calendar, TheMachinesOwnZoneCounts) {
    EXPECT_EQ(Calendar().daysBetween(utc(2024, 1, 10, 12), utc(2024, 1, 12, 12)), 2);
}

TEST(RelativeDate, EverySpanFromAWednesdayNoon) {
    struct Row {
        double seconds; // later than now
        std::string text;
    };
    constexpr double kDay = 86'400;
    const std::vector<Row> rows = {
        {0, "now"},
        {0.4, "now"},
        {-0.4, "now"},
        {-0.5, "1 second ago"},
        {-1, "1 second ago"},
        {0.5, "in 1 second"},
        {1, "in 1 second"},
        {-59, "59 seconds ago"},
        {-59.4, "59 seconds ago"},
        {-59.5, "1 minute ago"},
        {-60, "1 minute ago"},
        {-89, "1 minute ago"},
        {-90, "2 minutes ago"},
        {-119, "2 minutes ago"},
        {-120, "2 minutes ago"},
        {-59 * 60, "59 minutes ago"},
        {-3'569, "59 minutes ago"},
        {-3'570, "1 hour ago"},
        {-3'599, "1 hour ago"},
        {-3'600, "1 hour ago"},
        {-5'399, "1 hour ago"},
        {-5'400, "2 hours ago"},
        {-7'200, "2 hours ago"},
        {-23 * 3'600, "23 hours ago"},
        {-84'599, "23 hours ago"},
        {-84'600, "yesterday"},
        {-24 * 3'600, "yesterday"},
        {-25 * 3'600, "yesterday"},
        {-36 * 3'600, "yesterday"},
        {-129'601, "2 days ago"},
        {-47 * 3'600, "2 days ago"},
        {3'600, "in 1 hour"},
        {12 * 3'600, "in 12 hours"},
        {86'399, "tomorrow"},
        {kDay, "tomorrow"},
        {2 * kDay, "in 2 days"},
        {-2 * kDay, "2 days ago"},
        {-3 * kDay, "3 days ago"},
        {-6 * kDay, "6 days ago"},
        {-604'799, "last week"},
        {-7 * kDay, "last week"},
        {-8 * kDay, "last week"},
        {-10 * kDay, "last week"},
        {-11 * kDay, "2 weeks ago"},
        {-12 * kDay, "2 weeks ago"},
        {-13 * kDay, "2 weeks ago"},
        {-14 * kDay, "2 weeks ago"},
        {-20 * kDay, "3 weeks ago"},
        {-21 * kDay, "3 weeks ago"},
        {-27 * kDay, "last month"},
        {-28 * kDay, "last month"},
        {-29 * kDay, "last month"},
        {-30 * kDay, "last month"},
        {-31 * kDay, "last month"},
        {-45 * kDay, "2 months ago"},
        {-59 * kDay, "2 months ago"},
        {-60 * kDay, "2 months ago"},
        {-90 * kDay, "3 months ago"},
        {7 * kDay, "next week"},
        {14 * kDay, "in 2 weeks"},
        {31 * kDay, "next month"},
        {365 * kDay, "next year"},
    };
    const Calendar gmt("GMT");
    const Date now = utc(2024, 5, 15, 12);
    for (const auto& row : rows) {
        EXPECT_EQ(gmt.relativeDescription(now.addingSeconds(row.seconds), now), row.text) << row.seconds;
    }
}

TEST(RelativeDate, EveryDateFromAWednesdayNoon) {
    struct Row {
        Date date;
        std::string text;
    };
    const std::vector<Row> rows = {
        {utc(2024, 5, 13, 23, 59, 59), "2 days ago"}, {utc(2024, 5, 14), "yesterday"},
        {utc(2024, 5, 5, 12), "last week"},           {utc(2024, 5, 4, 12), "2 weeks ago"},
        {utc(2024, 4, 18, 12), "last month"},         {utc(2024, 3, 31, 12), "2 months ago"},
        {utc(2024, 2, 15, 12), "3 months ago"},       {utc(2023, 11, 15, 12), "6 months ago"},
        {utc(2023, 6, 15, 12), "11 months ago"},      {utc(2023, 5, 16, 12), "last year"},
        {utc(2023, 5, 15, 12), "last year"},          {utc(2023, 1, 1), "last year"},
        {utc(2023, 1, 1, 12), "last year"},           {utc(2022, 12, 31, 23, 59, 59), "2 years ago"},
        {utc(2022, 11, 15, 12), "2 years ago"},       {utc(2022, 5, 15, 12), "2 years ago"},
        {utc(2014, 5, 15, 12), "10 years ago"},       {utc(2034, 5, 15, 12), "in 10 years"},
        {utc(1, 1, 3, 12), "2,023 years ago"},
    };
    const Calendar gmt("GMT");
    for (const auto& row : rows) {
        EXPECT_EQ(gmt.relativeDescription(row.date, utc(2024, 5, 15, 12)), row.text)
            << row.date.secondsSinceReferenceDate;
    }
}

TEST(RelativeDate, TheHourTheDayAndTheEdgesOfTheCalendarDecide) {
    struct Row {
        Date now;
        Date date;
        std::string text;
    };
    const Date noonInJune = utc(2021, 6, 10, 12);
    const std::vector<Row> rows = {
        {utc(2024, 5, 15, 0, 30), utc(2024, 5, 13, 23, 30), "2 days ago"},
        {utc(2024, 5, 15, 2), utc(2024, 5, 14, 1), "yesterday"},
        {utc(2024, 5, 15, 23, 30), utc(2024, 5, 15, 0, 30), "23 hours ago"},
        {utc(2024, 5, 31, 12), utc(2024, 5, 1, 12), "last month"},
        {utc(2024, 3, 1, 12), utc(2024, 1, 31, 12), "2 months ago"},
        {utc(2025, 1, 1, 12), utc(2024, 12, 31, 23), "13 hours ago"},
        {noonInJune, utc(2021, 6, 9, 13), "23 hours ago"},
        {noonInJune, utc(2021, 6, 9, 11), "yesterday"},
        {noonInJune, utc(2021, 6, 11, 7), "in 19 hours"},
        {noonInJune, utc(2021, 6, 11, 23, 0, 59), "tomorrow"},
        {noonInJune, utc(2021, 5, 30, 23, 59, 59), "last week"},
        {noonInJune, utc(2021, 6, 5, 23, 59, 59), "5 days ago"},
        {noonInJune, utc(2020, 12, 6, 12), "6 months ago"},
        {noonInJune, utc(2020, 1, 1, 12), "last year"},
    };
    const Calendar gmt("GMT");
    for (const auto& row : rows) {
        EXPECT_EQ(gmt.relativeDescription(row.date, row.now), row.text) << row.date.secondsSinceReferenceDate;
    }
}

TEST(RelativeDate, MidnightIsThatOfTheTimeZone) {
    const Date now = utc(2024, 5, 15, 12);
    const Date date = utc(2024, 5, 14, 3, 30); // the evening of the 13th in New York
    EXPECT_EQ(Calendar("GMT").relativeDescription(date, now), "yesterday");
    EXPECT_EQ(Calendar("America/New_York").relativeDescription(date, now), "2 days ago");
}

// In Cairo the clock of April 26, 2024 went from 0:00 to 1:00.
TEST(RelativeDate, ADayWithoutMidnightBeginsWithItsFirstHour) {
    const Calendar cairo("Africa/Cairo");
    const Date noon = utc(2024, 4, 26, 9);
    EXPECT_EQ(cairo.relativeDescription(noon.addingSeconds(-11.5 * 3'600), noon), "12 hours ago");
    EXPECT_EQ(cairo.relativeDescription(utc(2024, 4, 24, 9), noon), "2 days ago");
    EXPECT_EQ(cairo.relativeDescription(noon, utc(2024, 4, 24, 9)), "in 2 days");
}

TEST(RelativeDate, DatesOutOfAllRangesAreSurvived) {
    const Calendar calendar("America/New_York");
    const Date now = utc(2024, 5, 15, 12);
    const double most = std::numeric_limits<double>::infinity();
    EXPECT_THAT(calendar.relativeDescription(Date{-most}, now), testing::EndsWith(" years ago"));
    EXPECT_THAT(calendar.relativeDescription(Date{most}, now), testing::StartsWith("in "));
    EXPECT_THAT(calendar.relativeDescription(now, Date{most}), testing::EndsWith(" years ago"));
    EXPECT_THAT(calendar.relativeDescription(Date{std::numeric_limits<double>::quiet_NaN()}, now),
                testing::EndsWith(" years ago"));
}

} // namespace
} // namespace quillane
