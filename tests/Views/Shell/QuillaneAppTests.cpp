#include "Components/PushButton.h"
#include "DefaultsKeys.h"
#include "Onboarding/OnboardingView.h"
#include "QuillaneApp.h"
#include "SamplePlatform.h"
#include "Settings/SettingsView.h"
#include "Shell/BrandButton.h"
#include "Shell/ContentView.h"
#include "Shell/Sidebar.h"
#include "Welcomed.h"
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <chrono>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <utility>

using namespace quillane;
using Kind = AppLibrary::Phase::Kind;

namespace {

class WholeApp : public testing::Test {
  protected:
    static void draw() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    // Posts a notification and clicks it.
    void click(std::map<std::string, std::string> userInfo) {
        sample.notifications.add({"weekly", "Title", "Body", std::move(userInfo)});
        sample.notifications.click("weekly");
        sample.runner.settle();
        draw();
    }
    // An entry of the brand row's menu, where all commands stand.
    QAction& command(const QString& words) {
        for (auto* const action : app.window()->sidebar()->brand()->menu()->actions()) {
            if (action->text() == words) {
                return *action;
            }
        }
        ADD_FAILURE() << "no command " << qPrintable(words);
        static QAction none;
        return none;
    }
    SamplePlatform sample{SampleMac()};
    Welcomed welcomed{sample.defaults};
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

TEST_F(WholeApp, AtTheFirstLaunchTheWelcomeIsUpAndTheScanRunsBehindIt) {
    sample.defaults.clear(DefaultsKeys::kHasSeenOnboarding);
    app.showWindow();
    draw();
    ASSERT_NE(app.window()->onboarding(), nullptr);
    sample.runner.runAll();
    EXPECT_EQ(app.library().phase.get().kind, Kind::ready);
    app.window()->close();
    draw();
    EXPECT_FALSE(sample.defaults.isStored(DefaultsKeys::kHasSeenOnboarding));
    app.showWindow();
    draw();
    EXPECT_NE(app.window()->onboarding(), nullptr);
}

TEST_F(WholeApp, TheSettingsShowTheWelcomeAgainAlsoWhenTheWindowIsClosed) {
    app.showSettings(Scenes::SettingsTab::general);
    for (auto* const button : app.settings()->findChildren<PushButton*>()) {
        if (button->label() == "Show Welcome Again") {
            button->click();
        }
    }
    draw();
    ASSERT_NE(app.window(), nullptr);
    ASSERT_NE(app.window()->onboarding(), nullptr);
    EXPECT_EQ(app.window()->onboarding()->page(), 0);
    app.window()->onboarding()->skipButton()->click();
    draw();
    EXPECT_EQ(app.window()->onboarding(), nullptr);
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

TEST_F(WholeApp, AClickOnANotificationShowsItsSectionInTheWindowThatIsOpen) {
    app.showWindow();
    ContentView* const window = app.window();
    click({{"section", "Orphaned Files"}});
    EXPECT_EQ(app.window(), window);
    EXPECT_EQ(window->state().section.get(), LibrarySection::orphans);
}

TEST_F(WholeApp, AClickWhileNoWindowIsOpenOpensItFirstAndThenShowsTheSection) {
    click({{"section", "Orphaned Files"}});
    ASSERT_NE(app.window(), nullptr);
    EXPECT_TRUE(app.window()->isVisible());
    EXPECT_EQ(app.window()->state().section.get(), LibrarySection::orphans);
}

TEST_F(WholeApp, AClickOnANotificationWithoutASectionOnlyBringsTheWindowForward) {
    app.showWindow();
    app.window()->showSection(LibrarySection::applications);
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    click({});
    EXPECT_TRUE(QTest::qWaitForWindowActive(app.window()));
    EXPECT_EQ(app.window()->state().section.get(), LibrarySection::applications);
}

TEST_F(WholeApp, AClickBringsAWindowBackThatWasMinimizedAndLeavesItsSize) {
    app.showWindow();
    app.window()->setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
    click({{"section", "Orphaned Files"}});
    EXPECT_EQ(app.window()->windowState() & (Qt::WindowMaximized | Qt::WindowMinimized), Qt::WindowMaximized);
}

// The program listens from its start, not from its first window on.
TEST(QuillaneApp, AClickThatCameBeforeTheProgramIsAnsweredByIt) {
    SamplePlatform sample{SampleMac()};
    sample.notifications.add({"weekly", "Title", "Body", {{"section", "Orphaned Files"}}});
    sample.notifications.click("weekly");
    sample.runner.settle();
    QuillaneApp app{sample.platform};
    sample.runner.settle();
    ASSERT_NE(app.window(), nullptr);
    EXPECT_EQ(app.window()->state().section.get(), LibrarySection::orphans);
}

TEST(QuillaneApp, AClickAfterItsEndIsTheNextOnes) {
    SamplePlatform sample{SampleMac()};
    {
        const QuillaneApp app{sample.platform};
    }
    sample.notifications.add({"weekly", "Title", "Body", {}});
    sample.notifications.click("weekly");
    sample.runner.settle();
    int told = 0;
    sample.notifications.setClickHandler([&](const auto&) { ++told; });
    sample.runner.settle();
    EXPECT_EQ(told, 1);
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

// The settings

TEST_F(WholeApp, TheSettingsThatAreOpenAreNotOpenedTwiceAndShowTheTabThatIsAskedFor) {
    app.showSettings(Scenes::SettingsTab::general);
    SettingsView* const first = app.settings();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isVisible());
    app.showSettings(Scenes::SettingsTab::automation);
    EXPECT_EQ(app.settings(), first);
    EXPECT_EQ(first->tab(), Scenes::SettingsTab::automation);
}

TEST_F(WholeApp, SettingsThatWereClosedOpenAnew) {
    app.showSettings(Scenes::SettingsTab::automation);
    app.settings()->close();
    draw();
    EXPECT_EQ(app.settings(), nullptr);
    app.showSettings(Scenes::SettingsTab::general);
    ASSERT_NE(app.settings(), nullptr);
    EXPECT_TRUE(app.settings()->isVisible());
    EXPECT_EQ(app.settings()->tab(), Scenes::SettingsTab::general);
}

TEST_F(WholeApp, TheSettingsAndTheMainWindowLiveWithoutEachOther) {
    app.showWindow();
    app.showSettings(Scenes::SettingsTab::general);
    app.window()->close();
    draw();
    ASSERT_NE(app.settings(), nullptr);
    EXPECT_TRUE(app.settings()->isVisible());
    app.showWindow();
    app.settings()->close();
    draw();
    EXPECT_EQ(app.settings(), nullptr);
    EXPECT_TRUE(app.window()->isVisible());
}

TEST_F(WholeApp, TheSettingsOpenOverTheMiddleOfTheMainWindow) {
    app.showWindow();
    app.window()->move(-300, 0);
    app.showSettings(Scenes::SettingsTab::general);
    constexpr int kEdges = 4; // of the windows
    EXPECT_NEAR(app.settings()->geometry().center().x(), app.window()->geometry().center().x(), kEdges);
}

TEST_F(WholeApp, ShowWelcomeAgainOpensTheMainWindowWhereThereIsNone) {
    app.showSettings(Scenes::SettingsTab::general);
    int asked = 0;
    const auto hearing =
        app.notifications().observe(NotificationName::kShowOnboarding, [&](const auto&) { ++asked; });
    for (auto* const button : app.settings()->findChildren<QAbstractButton*>()) {
        if (button->accessibleName() == "Show Welcome Again") {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    ASSERT_NE(app.window(), nullptr);
    EXPECT_TRUE(app.window()->isVisible());
    EXPECT_EQ(asked, 1);
}

// The commands that lead to other windows

TEST_F(WholeApp, CtrlCommaOpensTheSettingsWithTheirFirstTab) {
    app.showWindow();
    app.window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(app.window()));
    QTest::keyClick(app.window(), Qt::Key_Comma, Qt::ControlModifier);
    ASSERT_NE(app.settings(), nullptr);
    EXPECT_EQ(app.settings()->tab(), Scenes::SettingsTab::general);
    EXPECT_EQ(command("Settings…").menuRole(), QAction::PreferencesRole);
}

TEST_F(WholeApp, CheckForUpdatesAsksTheUpdaterAndCanBeChosenOnlyWhileACheckCanStart) {
    app.showWindow();
    QAction& check = command("Check for Updates…");
    EXPECT_TRUE(check.isEnabled());
    check.trigger();
    EXPECT_EQ(sample.updater.checks, 1);
    for (const bool can : {false, true}) {
        sample.updater.canCheck = can;
        sample.updater.tellOfChange();
        sample.runner.settle();
        draw();
        EXPECT_EQ(check.isEnabled(), can);
    }
}

TEST_F(WholeApp, WelcomeToQuillaneAsksTheWindowForTheWelcome) {
    app.showWindow();
    int asked = 0;
    const auto hearing =
        app.notifications().observe(NotificationName::kShowOnboarding, [&](const auto&) { ++asked; });
    command("Welcome to Quillane").trigger();
    EXPECT_EQ(asked, 1);
}

// Qt guesses by words what an action without a role is for, and moves it.
TEST_F(WholeApp, EachCommandSaysWhereItStandsInAMenuBarAndNothingIsGuessed) {
    app.showWindow();
    std::map<QString, QAction::MenuRole> roles = {
        {"Settings…", QAction::PreferencesRole},
        {"Quit Quillane", QAction::QuitRole},
        {"Check for Updates…", QAction::ApplicationSpecificRole},
        {"Grant Full Disk Access…", QAction::ApplicationSpecificRole},
    };
    std::size_t others = 0;
    for (const auto* const action : app.window()->actions()) {
        const auto role = roles.extract(action->text());
        EXPECT_EQ(action->menuRole(), role ? role.mapped() : QAction::NoRole) << qPrintable(action->text());
        others += role ? 0 : 1;
    }
    EXPECT_TRUE(roles.empty()) << "each of them is there";
    EXPECT_GT(others, 3U);
}
