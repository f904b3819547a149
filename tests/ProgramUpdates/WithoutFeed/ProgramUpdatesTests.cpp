#include "ManualClock.h"
#include "ProgramUpdates.h"
#include "SettingsHome.h"
#include "StepTaskRunner.h"
#include <filesystem>
#include <gtest/gtest.h>

using namespace quillane;

namespace {

class UpdatesWithoutFeed : public testing::Test {
  protected:
    SettingsHome m_home;
    StepTaskRunner m_runner;
    ManualClock m_clock{m_runner};
    ProgramUpdates m_updates{m_clock, m_runner, m_home.path()};
};

} // namespace

TEST_F(UpdatesWithoutFeed, AskNobodyAndKnowTheirVersion) {
    EXPECT_FALSE(m_updates.updater().canCheckForUpdates());
    EXPECT_EQ(m_updates.updater().lastUpdateCheckDate(), std::nullopt);
    EXPECT_EQ(m_updates.updater().installedVersion(), QUILLANE_VERSION);
    m_updates.updater().checkForUpdates();
    EXPECT_EQ(m_clock.sleepers(), 0U);
}

TEST_F(UpdatesWithoutFeed, KeepTheFlagInAFileOfTheirOwn) {
    EXPECT_FALSE(m_updates.updater().automaticallyChecksForUpdates());
    EXPECT_FALSE(std::filesystem::exists(m_home.file("updates.plist")));
    m_updates.updater().setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(ProgramUpdates(m_clock, m_runner, m_home.path()).updater().automaticallyChecksForUpdates());
    EXPECT_TRUE(std::filesystem::exists(m_home.file("updates.plist")));
    EXPECT_FALSE(std::filesystem::exists(m_home.file("defaults.plist")));
    EXPECT_EQ(m_clock.sleepers(), 0U);
}
