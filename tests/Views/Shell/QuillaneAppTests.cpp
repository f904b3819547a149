#include "DefaultsKeys.h"
#include "QuillaneApp.h"
#include "SamplePlatform.h"
#include "Shell/ContentView.h"
#include <QCoreApplication>
#include <chrono>
#include <gtest/gtest.h>
#include <set>

using namespace quillane;
using Kind = AppLibrary::Phase::Kind;

namespace {

class WholeApp : public testing::Test {
  protected:
    static void draw() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    SamplePlatform sample{SampleMac()};
    QuillaneApp app{sample.platform};
};

} // namespace

TEST_F(WholeApp, NothingIsScannedBeforeTheWindowOpens) {
    EXPECT_EQ(app.library().phase.get().kind, Kind::idle);
    EXPECT_EQ(app.window(), nullptr);
}

TEST_F(WholeApp, SettingsHaveTheirValuesFromTheStart) {
    EXPECT_TRUE(sample.platform.defaults.boolean(DefaultsKeys::kShowMenuBarExtra));
    EXPECT_EQ(sample.platform.defaults.integer(DefaultsKeys::kScanFrequencyHours), 24);
}

TEST_F(WholeApp, TheWindowThatIsOpenIsNotOpenedTwice) {
    app.showWindow();
    ContentView* const first = app.window();
    app.showWindow();
    EXPECT_EQ(app.window(), first);
}

TEST_F(WholeApp, ClosingAndOpeningTheWindowKeepsTheLibraryAndStartsNoSecondScan) {
    app.showWindow();
    sample.runner.runAll();
    ASSERT_EQ(app.library().phase.get().kind, Kind::ready);
    app.window()->close();
    draw();
    ASSERT_EQ(app.window(), nullptr);
    app.showWindow();
    EXPECT_NE(app.window(), nullptr);
    EXPECT_EQ(app.library().phase.get().kind, Kind::ready);
}

TEST_F(WholeApp, ClosingTheWindowDoesNotStopTheScan) {
    app.showWindow();
    app.window()->close();
    draw();
    sample.runner.runAll();
    EXPECT_EQ(app.library().phase.get().kind, Kind::ready);
}

TEST_F(WholeApp, TheWindowsFirstStartStartsTheHourlyLoopAndASecondOneNoOther) {
    EXPECT_EQ(sample.clock.sleepers(), 0U);
    app.showWindow();
    sample.runner.runAll();
    EXPECT_EQ(sample.clock.sleepers(), 1U) << "at rest nothing waits but the hour";
    app.window()->close();
    draw();
    app.showWindow();
    sample.runner.runAll();
    EXPECT_EQ(sample.clock.sleepers(), 1U);
}

TEST_F(WholeApp, TheLoopGoesOnWhenTheWindowIsClosed) {
    sample.defaults.set(DefaultsKeys::kScheduledScans, true);
    app.showWindow();
    sample.runner.runAll();
    app.window()->close();
    draw();
    sample.clock.advance(std::chrono::hours(1));
    sample.clock.advance(std::chrono::seconds(2));
    EXPECT_NE(app.library().lastAutomaticScan(), std::nullopt);
}

TEST_F(WholeApp, TheWindowsStartWatchesTheApplicationsFoldersOnceAndForAsLongAsTheProgramRuns) {
    const std::multiset<FileURL> folders = {FileURL("/Applications"), FileURL("/Users/alex/Applications")};
    EXPECT_TRUE(sample.directories.watched().empty());
    app.showWindow();
    sample.runner.runAll();
    EXPECT_EQ(sample.directories.watched(), folders);
    app.window()->close();
    draw();
    EXPECT_EQ(sample.directories.watched(), folders);
    app.showWindow();
    sample.runner.runAll();
    EXPECT_EQ(sample.directories.watched(), folders);
}
