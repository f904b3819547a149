#include "SparkleUpdater.h"
#include "StandIns.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace quillane {
namespace {

const StandIn::Bundle kBundle = {.information = {{"SUFeedURL", "https://example.org/feed"},
                                                 {"SUPublicEDKey", "key"},
                                                 {"CFBundleShortVersionString", "1.2"}},
                                 .frameworks = "/Applications/Quillane.app/Contents/Frameworks"};

class SparkleUpdaterTest : public testing::Test {
  protected:
    SparkleUpdaterTest() {
        StandIn::begin();
        StandIn::setBundle(kBundle);
        StandIn::carrySparkle();
    }

    StepTaskRunner tasks;
};

TEST_F(SparkleUpdaterTest, IsNoneWhereTheBundleDoesNotSayWhereToAskOrWhomToBelieve) {
    for (const char* missing : {"SUFeedURL", "SUPublicEDKey"}) {
        auto bundle = kBundle;
        bundle.information.erase(missing);
        StandIn::setBundle(bundle);
        EXPECT_EQ(makeSparkleUpdater(tasks), nullptr) << missing;
        bundle.information[missing] = "";
        StandIn::setBundle(bundle);
        EXPECT_EQ(makeSparkleUpdater(tasks), nullptr) << missing;
    }
    EXPECT_FALSE(StandIn::sparkle().wasStarted);
}

TEST_F(SparkleUpdaterTest, IsNoneWhereTheBundleDoesNotCarryIt) {
    StandIn::begin();
    StandIn::setBundle(kBundle);
    EXPECT_EQ(makeSparkleUpdater(tasks), nullptr);
    auto bundle = kBundle;
    bundle.frameworks.clear();
    StandIn::setBundle(bundle);
    StandIn::carrySparkle();
    EXPECT_EQ(makeSparkleUpdater(tasks), nullptr);
}

TEST_F(SparkleUpdaterTest, IsStartedAndTellsWhatSparkleTells) {
    const auto updater = makeSparkleUpdater(tasks);
    ASSERT_NE(updater, nullptr);
    EXPECT_TRUE(StandIn::sparkle().wasStarted);
    EXPECT_FALSE(updater->canCheckForUpdates());
    EXPECT_FALSE(updater->lastUpdateCheckDate().has_value());
    EXPECT_EQ(updater->installedVersion(), "1.2");
    StandIn::setSparkle(true, 700'000'000);
    EXPECT_TRUE(updater->canCheckForUpdates());
    EXPECT_EQ(updater->lastUpdateCheckDate(), Date{700'000'000});
}

TEST_F(SparkleUpdaterTest, HandsOnTheSwitchAndTheCheck) {
    const auto updater = makeSparkleUpdater(tasks);
    EXPECT_FALSE(updater->automaticallyChecksForUpdates());
    updater->setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(StandIn::sparkle().isAutomatic);
    EXPECT_TRUE(updater->automaticallyChecksForUpdates());
    updater->checkForUpdates();
    EXPECT_EQ(StandIn::sparkle().checks, 1);
}

TEST_F(SparkleUpdaterTest, ChangesAreToldAtALaterTurn) {
    const auto updater = makeSparkleUpdater(tasks);
    int changes = 0;
    updater->setChangeHandler([&] { ++changes; });
    StandIn::setSparkle(true, 1);
    EXPECT_EQ(changes, 0);
    tasks.settle();
    EXPECT_EQ(changes, 2);
    updater->setAutomaticallyChecksForUpdates(true);
    tasks.settle();
    EXPECT_EQ(changes, 3);
    updater->setChangeHandler({});
    StandIn::setSparkle(false, 2);
    tasks.settle();
    EXPECT_EQ(changes, 3);
}

TEST_F(SparkleUpdaterTest, AfterItsEndNothingIsObservedAndNothingTold) {
    auto updater = makeSparkleUpdater(tasks);
    int changes = 0;
    updater->setChangeHandler([&] { ++changes; });
    EXPECT_EQ(StandIn::observers(), 3);
    StandIn::setSparkle(true, 1);
    updater.reset();
    EXPECT_EQ(StandIn::observers(), 0);
    tasks.settle();
    EXPECT_EQ(changes, 0);
}

} // namespace
} // namespace quillane
