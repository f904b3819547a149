#include "QueryTime.h"
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

namespace quillane {
namespace {

constexpr Date kNow = Date::fromUnix(1710088200); // Sunday 2024-03-10 16:30:00 UTC, 12:30 in New York

// The process's time zone for one test.
class QueryTime : public testing::Test {
  protected:
    void SetUp() override {
        const char* const zone = std::getenv("TZ");
        m_previous = zone == nullptr ? std::nullopt : std::optional<std::string>(zone);
        ::setenv("TZ", "America/New_York", 1);
        ::tzset();
    }
    void TearDown() override {
        if (m_previous) {
            ::setenv("TZ", m_previous->c_str(), 1);
        } else {
            ::unsetenv("TZ");
        }
        ::tzset();
    }

    static void expectUnix(std::string_view text, std::int64_t seconds) {
        const auto date = queryTime(text, kNow);
        ASSERT_TRUE(date) << text;
        EXPECT_EQ(*date, Date::fromUnix(seconds)) << text;
    }

  private:
    std::optional<std::string> m_previous;
};

TEST_F(QueryTime, NowCountsSeconds) {
    expectUnix("$time.now", 1710088200);
    expectUnix("$time.now()", 1710088200);
    expectUnix("$time.now(-3600)", 1710084600);
    expectUnix("$time.now(+60)", 1710088260);
}

TEST_F(QueryTime, DaysBeginAtMidnightOfTheMachinesZone) {
    expectUnix("$time.today", 1710046800);    // 00:00 EST; the clocks go forward at 02:00
    expectUnix("$time.today(1)", 1710129600); // 00:00 EDT: this day has 23 hours
    expectUnix("$time.today(-7)", 1709442000);
    expectUnix("$time.yesterday", 1709960400);
}

TEST_F(QueryTime, WeeksBeginOnSunday) {
    expectUnix("$time.this_week", 1710046800);
    expectUnix("$time.this_week(-1)", 1709442000);
}

TEST_F(QueryTime, MonthsAndYearsBeginOnTheirFirstDay) {
    expectUnix("$time.this_month", 1709269200);
    expectUnix("$time.this_month(-3)", 1701406800);
    expectUnix("$time.this_year()", 1704085200);
    expectUnix("$time.this_year(-1)", 1672549200);
}

TEST_F(QueryTime, IsoDatesAreUniversalTime) {
    expectUnix("$time.iso(2024-01-02T03:04:05Z)", 1704164645);
    expectUnix("$time.iso(2024-01-02T03:04:05)", 1704164645);
    expectUnix("$time.iso(2024-02-29)", 1709164800);
    expectUnix("$time.iso(1970-01-01T00:00:00Z)", 0);
    expectUnix("$time.iso(1900-03-01)", -2203891200);
    expectUnix("$time.iso(2000-12-31)", 978220800);
}

TEST_F(QueryTime, EverythingElseIsNoTime) {
    for (const char* text : {"",
                             "$time",
                             "$time.",
                             "$time.tomorrow",
                             "$time.now(",
                             "$time.now)",
                             "$time.now(x)",
                             "$time.now(1",
                             "now",
                             "$time.now(99999999999999999999)",
                             "$time.today(99999999999)",
                             "$time.today(-1000001)",
                             "$time.iso",
                             "$time.iso()",
                             "$time.iso(2024)",
                             "$time.iso(2024-13-01)",
                             "$time.iso(2023-02-29)",
                             "$time.iso(2024-01-00)",
                             "$time.iso(2024-01-02T)",
                             "$time.iso(2024-01-02T24:00:00Z)",
                             "$time.iso(2024-01-02T03:04)",
                             "$time.iso(2024-01-02T03:04:05Zx)",
                             "$time.iso(-024-01-02)"}) {
        EXPECT_EQ(queryTime(text, kNow), std::nullopt) << text;
    }
}

} // namespace
} // namespace quillane
