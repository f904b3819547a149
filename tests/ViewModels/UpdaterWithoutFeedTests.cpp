#include "MemoryDefaults.h"
#include "UpdateSettings.h"
#include "UpdaterWithoutFeed.h"
#include <gtest/gtest.h>

using namespace quillane;

namespace {

const auto kInstalled = *VersionNumber::parse("1.2");

} // namespace

TEST(UpdaterWithoutFeed, KeepsWhatIsWantedOfAutomaticChecks) {
    MemoryDefaults settings;
    UpdaterWithoutFeed updater(kInstalled, settings);
    EXPECT_FALSE(updater.automaticallyChecksForUpdates());
    updater.setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(updater.automaticallyChecksForUpdates());
    EXPECT_TRUE(UpdaterWithoutFeed(kInstalled, settings).automaticallyChecksForUpdates())
        << "at the next launch";
}

TEST(UpdaterWithoutFeed, CanNotCheckAndHasNeverChecked) {
    MemoryDefaults settings;
    settings.set(UpdateSettings::kLastCheck, Date{5}); // of another build
    UpdaterWithoutFeed updater(kInstalled, settings);
    updater.setAutomaticallyChecksForUpdates(true);
    updater.checkForUpdates();
    EXPECT_FALSE(updater.canCheckForUpdates());
    EXPECT_EQ(updater.lastUpdateCheckDate(), std::nullopt);
    EXPECT_EQ(updater.installedVersion(), "1.2");
}
