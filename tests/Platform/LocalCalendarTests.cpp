#include "LocalCalendar.h"
#include "TemporaryFolder.h"
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace quillane {
namespace {

// 2024-03-09 12:00 and 2024-03-10 11:00 UTC: New York's clocks went forward between the two.
constexpr Date kBefore = Date::fromUnix(1'709'985'600);
constexpr Date kAfter = Date::fromUnix(1'710'068'400);

// The days between the two: one where clocks went forward, none elsewhere.
int days(const Calendar& calendar) {
    return calendar.daysBetween(kBefore, kAfter);
}

class LocalCalendarTest : public testing::Test {
  protected:
    // As the system does it: a new link takes the place of the old one at once.
    void setZone(const std::string& target) {
        const auto next = m_folder.at("/next");
        std::filesystem::remove(next);
        std::filesystem::create_symlink(target, next);
        std::filesystem::rename(next, m_link);
    }

    TemporaryFolder m_folder;
    std::string m_link = m_folder.at("/localtime");
};

TEST_F(LocalCalendarTest, IsInTheZoneThatTheLinkLeadsTo) {
    setZone("/usr/share/zoneinfo/America/New_York");
    EXPECT_EQ(days(LocalCalendar(m_link, nullptr).current()), 1);
    setZone("../usr/share/zoneinfo/Asia/Tokyo");
    EXPECT_EQ(days(LocalCalendar(m_link, nullptr).current()), 0);
    setZone("/var/db/timezone/zoneinfo/America/New_York");
    EXPECT_EQ(days(LocalCalendar(m_link, nullptr).current()), 1);
}

TEST_F(LocalCalendarTest, FollowsAZoneThatChangesWhileTheProgramRuns) {
    setZone("/usr/share/zoneinfo/Asia/Tokyo");
    const LocalCalendar calendar(m_link, nullptr);
    EXPECT_EQ(days(calendar.current()), 0);
    setZone("/usr/share/zoneinfo/America/New_York");
    EXPECT_EQ(days(calendar.current()), 1);
    setZone("/usr/share/zoneinfo/Asia/Tokyo");
    EXPECT_EQ(days(calendar.current()), 0);
}

TEST_F(LocalCalendarTest, ACalendarThatWasHandedOutStaysAsItWas) {
    setZone("/usr/share/zoneinfo/Asia/Tokyo");
    const LocalCalendar calendar(m_link, nullptr);
    const Calendar before = calendar.current();
    setZone("/usr/share/zoneinfo/America/New_York");
    EXPECT_EQ(days(calendar.current()), 1);
    EXPECT_EQ(days(before), 0);
}

TEST_F(LocalCalendarTest, ALinkThatNamesNoZoneGivesWhatTheLibraryFindsForTheMachine) {
    const int expected = days(Calendar());
    EXPECT_EQ(days(LocalCalendar(m_link, nullptr).current()), expected); // no link at all
    for (const char* target : {"/usr/share/zoneinfo/Moon/Tranquility", "/usr/share/zoneinfo/", "nowhere"}) {
        setZone(target);
        EXPECT_EQ(days(LocalCalendar(m_link, nullptr).current()), expected) << target;
    }
}

TEST_F(LocalCalendarTest, TheEnvironmentDecidesWhereItNamesAZone) {
    setZone("/usr/share/zoneinfo/Asia/Tokyo");
    const LocalCalendar calendar(m_link, "anything");
    const int expected = days(Calendar());
    EXPECT_EQ(days(calendar.current()), expected);
    setZone("/usr/share/zoneinfo/America/New_York");
    EXPECT_EQ(days(calendar.current()), expected);
}

TEST_F(LocalCalendarTest, ManyThreadsMayAskWhileTheZoneChanges) {
    setZone("/usr/share/zoneinfo/Asia/Tokyo");
    const LocalCalendar calendar(m_link, nullptr);
    std::vector<std::thread> threads;
    std::vector<int> wrong(3);
    for (auto& count : wrong) {
        threads.emplace_back([&] {
            for (int i = 0; i < 200; ++i) {
                const int told = days(calendar.current());
                count += told == 0 || told == 1 ? 0 : 1;
            }
        });
    }
    for (int i = 0; i < 20; ++i) {
        setZone(i % 2 == 0 ? "/usr/share/zoneinfo/America/New_York" : "/usr/share/zoneinfo/Asia/Tokyo");
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(3));
    EXPECT_EQ(days(calendar.current()), 0);
}

} // namespace
} // namespace quillane
