// When the program ends, and what goes on without a window.
#include "Components/PushButton.h"
#include "Components/Stepper.h"
#include "DefaultsKeys.h"
#include "MenuBar/MenuBarPopover.h"
#include "MenuBar/MenuBarView.h"
#include "ProgramLife.h"
#include "QuillaneApp.h"
#include "Review/PutBack.h"
#include "Review/SweepPreviewSheet.h"
#include "Review/SweepReviewStage.h"
#include "SamplePlatform.h"
#include "Shell/ContentView.h"
#include "Updates/UpdateWindow.h"
#include "Updates/UpdateWindows.h"
#include "Welcomed.h"
#include <QApplication>
#include <QEvent>
#include <QTest>
#include <chrono>
#include <gtest/gtest.h>
#include <optional>

using namespace quillane;
using namespace std::chrono_literals;
using Asked = UpdatePresenter::Asked;
using Kind = AppLibrary::Phase::Kind;

namespace {

SampleMac macWithCaches() {
    SampleMac mac;
    mac.app("/Applications/Alder.app")
        .identifier("org.alder.app")
        .support("Library/Caches/org.alder.app", kilobytes(700));
    mac.app("/Applications/Birch.app")
        .identifier("org.birch.app")
        .support("Library/Caches/org.birch.app", kilobytes(400));
    return mac;
}

class LifeOfTheProgram : public testing::Test {
  protected:
    // One turn of everything: what is posted, what is drawn, what waits to be deleted.
    void turn() {
        sample.runner.settle();
        draw();
        sample.runner.settle();
    }
    static void draw() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
    void finish() {
        sample.runner.runAll();
        draw();
    }
    // The window is open, and its first scan has ended.
    void openReady() {
        app.showWindow();
        finish();
        ASSERT_EQ(app.library().phase.get().kind, Kind::ready);
    }
    void closeWindow() {
        app.window()->close();
        turn();
    }
    void wishItem(bool isShown) { sample.defaults.set(DefaultsKeys::kShowMenuBarExtra, isShown); }
    void setPanel(bool isThere) {
        sample.menuBarExtra.setPanel(isThere);
        turn();
    }
    void choose(PushButton* (MenuBarView::*button)() const) {
        sample.menuBarExtra.press();
        turn();
        ASSERT_NE(app.menuBarItem().popover(), nullptr);
        QTest::mouseClick((app.menuBarItem().popover()->view()->*button)(), Qt::LeftButton);
        draw();
    }
    // As the system asks, or a key.
    static bool askToQuit() {
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
        return quit.isAccepted();
    }
    // Up to where the first rows have moved and others have not.
    void startSweep() {
        app.library().tasks().start([this](StopToken) -> Task<> {
            co_await app.library().runSweep(app.library().fullPlan(), "Clean Now");
        });
        ASSERT_TRUE(sample.runner.runUntil([this] { return app.library().sweepProcessed.get() > 0; }));
        ASSERT_TRUE(app.library().isSweeping.get());
        ASSERT_FALSE(app.library().lastOperation->has_value());
        draw();
        ASSERT_EQ(ends, 0);
    }

    void tellOfUpdate(UpdatePresenter::Asked asked) {
        const auto version = [](const char* text) { return *VersionNumber::parse(text); };
        updates.showUpdate({version("1.10"), {}, "https://example.org/", "News"}, version("1.2"), asked);
    }

    SamplePlatform sample{macWithCaches()};
    Welcomed welcomed{sample.defaults};
    int ends = 0;
    QuillaneApp app{sample.platform, [this] { ++ends; }};
    UpdateWindows updates;
};

} // namespace

// The last window

TEST_F(LifeOfTheProgram, WithTheItemInSightTheProgramGoesOnWithoutAWindow) {
    openReady();
    closeWindow();
    EXPECT_EQ(app.window(), nullptr);
    EXPECT_EQ(ends, 0);
}

TEST_F(LifeOfTheProgram, WithTheSettingOffClosingTheWindowEndsIt) {
    wishItem(false);
    openReady();
    EXPECT_EQ(ends, 0);
    closeWindow();
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, WhereNoPanelTakesTheItemClosingTheWindowEndsIt) {
    sample.menuBarExtra.setPanel(false);
    openReady();
    EXPECT_EQ(ends, 0);
    closeWindow();
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, QtDoesNotEndItByItself) {
    EXPECT_FALSE(QApplication::quitOnLastWindowClosed());
}

TEST_F(LifeOfTheProgram, BeforeTheFirstWindowNothingEndsIt) {
    setPanel(false);
    wishItem(false);
    turn();
    sample.clock.advance(1h);
    EXPECT_EQ(ends, 0);
}

TEST_F(LifeOfTheProgram, WhileAnUpdateIsReadItGoesOnAndEndsWithThatWindow) {
    wishItem(false);
    openReady();
    updates.setOpening([this](QWidget& window, bool isAskedFor) { app.countWindow(window, isAskedFor); });
    tellOfUpdate(Asked::byItself);
    closeWindow();
    EXPECT_EQ(ends, 0);
    updates.window()->close();
    turn();
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, AnUpdateTakesAQuitBackOnlyWhenItWasAskedFor) {
    for (const auto asked : {Asked::byPerson, Asked::byItself}) {
        openReady();
        updates.setOpening([this](QWidget& window, bool isAskedFor) { app.countWindow(window, isAskedFor); });
        app.library().isPuttingBack = true;
        app.quit();
        tellOfUpdate(asked);
        app.library().isPuttingBack = false;
        turn();
        EXPECT_EQ(ends, asked == Asked::byPerson ? 0 : 1);
        updates.window()->close();
        turn();
    }
}

TEST_F(LifeOfTheProgram, WhileTheSettingsAreOpenItGoesOnAndWithTheLastWindowItEnds) {
    wishItem(false);
    openReady();
    app.showSettings(Scenes::SettingsTab::general);
    turn();
    closeWindow();
    EXPECT_EQ(ends, 0);
    app.settings()->close();
    turn();
    EXPECT_EQ(app.settings(), nullptr);
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, NewsOfAVersionThatAreOpenDoNotKeepIt) {
    UpdateWindows updates;
    sample.menuBarExtra.setPanel(false);
    openReady();
    updates.showUpToDate(*VersionNumber::parse("1.2"));
    turn();
    closeWindow();
    EXPECT_TRUE(updates.window()->isVisible());
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, AMinimizedWindowIsOpen) {
    wishItem(false);
    openReady();
    app.showSettings(Scenes::SettingsTab::general);
    app.window()->showMinimized();
    app.settings()->close();
    turn();
    EXPECT_EQ(ends, 0);
}

TEST_F(LifeOfTheProgram, TurningTheSettingOffWithoutAWindowEndsIt) {
    openReady();
    closeWindow();
    wishItem(false);
    turn();
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, TurningTheSettingOffInTheSettingsDoesNot) {
    openReady();
    app.showSettings(Scenes::SettingsTab::general);
    closeWindow();
    wishItem(false);
    turn();
    EXPECT_EQ(ends, 0);
    EXPECT_FALSE(sample.menuBarExtra.isInserted);
}

TEST_F(LifeOfTheProgram, ThePopoverIsNoWindowThatKeepsIt) {
    openReady();
    closeWindow();
    sample.menuBarExtra.press();
    turn();
    ASSERT_NE(app.menuBarItem().popover(), nullptr);
    wishItem(false);
    turn();
    EXPECT_EQ(ends, 1);
}

// The panel

TEST_F(LifeOfTheProgram, APanelThatComesBackWithinAMinuteFindsTheProgram) {
    openReady();
    closeWindow();
    setPanel(false);
    sample.clock.advance(59s);
    EXPECT_EQ(ends, 0);
    setPanel(true);
    sample.clock.advance(1h);
    EXPECT_EQ(ends, 0);
}

TEST_F(LifeOfTheProgram, AfterAMinuteWithoutPanelAndWindowItEndsSoThatNothingRunsUnseen) {
    openReady();
    closeWindow();
    setPanel(false);
    sample.clock.advance(ProgramLife::kPanelMayBeAway - 1ms);
    EXPECT_EQ(ends, 0);
    sample.clock.advance(1ms);
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, EachAbsenceOfThePanelHasItsOwnMinute) {
    openReady();
    closeWindow();
    for (int i = 0; i < 3; ++i) {
        setPanel(false);
        sample.clock.advance(40s);
        setPanel(true);
    }
    EXPECT_EQ(ends, 0);
}

TEST_F(LifeOfTheProgram, AWindowThatOpensMeanwhileKeepsIt) {
    openReady();
    closeWindow();
    setPanel(false);
    app.showWindow();
    turn();
    sample.clock.advance(1h);
    EXPECT_EQ(ends, 0);
    closeWindow();
    EXPECT_EQ(ends, 1) << "still without a panel";
}

TEST_F(LifeOfTheProgram, APanelThatGoesWhileAWindowIsOpenEndsNothing) {
    openReady();
    setPanel(false);
    sample.clock.advance(1h);
    EXPECT_EQ(ends, 0);
}

TEST_F(LifeOfTheProgram, WhileItWaitsForAPanelNothingElseWaitsThanThatAndTheHour) {
    openReady();
    closeWindow();
    EXPECT_EQ(sample.clock.sleepers(), 1U);
    setPanel(false);
    EXPECT_EQ(sample.clock.sleepers(), 2U);
    setPanel(true);
    EXPECT_EQ(sample.clock.sleepers(), 1U);
}

// Quitting

TEST_F(LifeOfTheProgram, QuitInThePopoverEndsItWithTheWindowOpen) {
    openReady();
    choose(&MenuBarView::quitButton);
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, EveryOtherWishToQuitEndsItTooAndOnce) {
    openReady();
    EXPECT_TRUE(askToQuit());
    turn();
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, AScanHoldsNothingUp) {
    app.showWindow();
    sample.runner.settle();
    ASSERT_EQ(app.library().phase.get().kind, Kind::scanning);
    EXPECT_TRUE(askToQuit());
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, AQuitDuringASweepWaitsUntilWhatMovedCanBePutBack) {
    openReady();
    startSweep();
    EXPECT_FALSE(askToQuit()) << "so that the system waits too";
    choose(&MenuBarView::quitButton);
    EXPECT_EQ(ends, 0);
    bool wasStored = false;
    ASSERT_TRUE(sample.runner.runUntil([&] {
        draw();
        wasStored = sample.defaults.isStored(DefaultsKeys::kLastOperation);
        return ends > 0 || !app.library().isSweeping.get();
    }));
    draw();
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(wasStored);
    EXPECT_FALSE(app.library().lastOperation.get()->moves.empty());
    finish();
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, AQuitDuringAPutBackWaitsForItsEnd) {
    openReady();
    startSweep();
    finish();
    app.window()->putBack()->start();
    sample.runner.settle();
    ASSERT_TRUE(app.library().isPuttingBack.get());
    choose(&MenuBarView::quitButton);
    EXPECT_EQ(ends, 0);
    ASSERT_TRUE(sample.runner.runUntil([this] { return !app.library().isPuttingBack.get(); }));
    EXPECT_FALSE(sample.defaults.isStored(DefaultsKeys::kLastOperation));
    draw();
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, TheLastWindowThatClosesDuringAPutBackEndsTheProgramAfterIt) {
    wishItem(false);
    openReady();
    startSweep();
    finish();
    app.window()->putBack()->start();
    sample.runner.settle();
    closeWindow();
    EXPECT_EQ(ends, 0);
    finish();
    EXPECT_EQ(ends, 1);
    EXPECT_FALSE(sample.defaults.isStored(DefaultsKeys::kLastOperation));
}

TEST_F(LifeOfTheProgram, TheMinuteWithoutAPanelBreaksOffNoSweep) {
    openReady();
    closeWindow();
    startSweep();
    setPanel(false);
    sample.clock.advanceWithoutRunning(1h);
    sample.runner.settle();
    draw();
    EXPECT_EQ(ends, 0);
    finish();
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(sample.defaults.isStored(DefaultsKeys::kLastOperation));
}

TEST_F(LifeOfTheProgram, AReviewWhoseSweepRunsDoesNotRefuseTheQuitThatWaitedForIt) {
    openReady();
    choose(&MenuBarView::reviewButton);
    auto* const sheet = app.window()->findChild<SweepPreviewSheet*>();
    ASSERT_NE(sheet, nullptr);
    sheet->reviewStage()->mainButton()->click();
    ASSERT_TRUE(sample.runner.runUntil([this] { return app.library().sweepProcessed.get() > 0; }));
    EXPECT_FALSE(askToQuit());
    finish();
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, WhoOpensTheWindowAgainBeforeTheSweepHasEndedTakesTheQuitBack) {
    openReady();
    startSweep();
    EXPECT_FALSE(askToQuit());
    app.showWindow();
    finish();
    EXPECT_EQ(ends, 0);
}

// The window again

TEST_F(LifeOfTheProgram, AClickBetweenTheClosingOfAWindowAndItsDeletionOpensANewOne) {
    openReady();
    QPointer<ContentView> dying = app.window();
    dying->close();
    ASSERT_NE(dying, nullptr);
    EXPECT_EQ(app.window(), nullptr);
    app.showWindow();
    EXPECT_NE(app.window(), dying.data());
    turn();
    EXPECT_EQ(dying, nullptr);
    ASSERT_NE(app.window(), nullptr);
    EXPECT_TRUE(app.window()->isVisible());
    EXPECT_EQ(ends, 0);
}

TEST_F(LifeOfTheProgram, TheSameHoldsForTheSettings) {
    openReady();
    app.showSettings(Scenes::SettingsTab::general);
    QPointer<SettingsView> dying = app.settings();
    dying->close();
    EXPECT_EQ(app.settings(), nullptr);
    app.showSettings(Scenes::SettingsTab::automation);
    turn();
    EXPECT_EQ(dying, nullptr);
    ASSERT_NE(app.settings(), nullptr);
    EXPECT_TRUE(app.settings()->isVisible());
    EXPECT_EQ(app.settings()->tab(), Scenes::SettingsTab::automation);
}

TEST_F(LifeOfTheProgram, AWindowThatOpensAgainWithTheSettingOffOutlivesTheClosedOne) {
    wishItem(false);
    openReady();
    app.window()->close();
    app.showWindow();
    turn();
    EXPECT_EQ(ends, 0);
}

TEST_F(LifeOfTheProgram, OpeningTheWindowAgainStartsNoSecondFirstScan) {
    openReady();
    closeWindow();
    sample.runner.clearHistory();
    choose(&MenuBarView::windowButton);
    ASSERT_NE(app.window(), nullptr);
    EXPECT_EQ(app.library().phase.get().kind, Kind::ready);
}

TEST_F(LifeOfTheProgram, AWindowThatOpensDuringTheFirstScanStartsNoOther) {
    app.showWindow();
    sample.runner.settle();
    closeWindow();
    ASSERT_NE(app.library().phase.get().kind, Kind::ready);
    app.showWindow();
    ASSERT_TRUE(sample.runner.runUntil([this] { return app.library().phase.get().kind == Kind::ready; }));
    turn();
    EXPECT_EQ(app.library().phase.get().kind, Kind::ready) << "no scan waits behind the first";
}

TEST_F(LifeOfTheProgram, ANewWindowStartsAfresh) {
    openReady();
    app.window()->showSection(LibrarySection::startup);
    closeWindow();
    app.showWindow();
    EXPECT_EQ(app.window()->state().section.get(), initialSection());
}

// The popover

TEST_F(LifeOfTheProgram, ReviewAndCleanOpensTheReviewInAWindowThatWasClosed) {
    openReady();
    closeWindow();
    choose(&MenuBarView::reviewButton);
    ASSERT_NE(app.window(), nullptr);
    EXPECT_TRUE(app.window()->isVisible());
    const auto* const sheet = app.window()->findChild<SweepPreviewSheet*>();
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->stage(), SweepPreviewSheet::Stage::review);
    EXPECT_FALSE(app.library().isSweeping.get()) << "nothing goes before it is confirmed";
}

TEST_F(LifeOfTheProgram, ReviewAndCleanBringsTheOverviewOfTheOpenWindowForward) {
    openReady();
    app.window()->showSection(LibrarySection::startup);
    turn();
    ContentView* const window = app.window();
    choose(&MenuBarView::reviewButton);
    EXPECT_EQ(app.window(), window);
    EXPECT_EQ(window->state().section.get(), LibrarySection::overview);
    EXPECT_EQ(window->findChildren<SweepPreviewSheet*>().size(), 1);
}

TEST_F(LifeOfTheProgram, BetweenClosingAndDeletionTheReviewOpensInTheNewWindowOnly) {
    openReady();
    sample.menuBarExtra.press();
    turn();
    auto* const button = app.menuBarItem().popover()->view()->reviewButton();
    app.window()->close();
    QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_NE(app.window(), nullptr);
    EXPECT_NE(app.window()->findChild<SweepPreviewSheet*>(), nullptr);
    turn();
    EXPECT_NE(app.window()->findChild<SweepPreviewSheet*>(), nullptr);
}

TEST_F(LifeOfTheProgram, AReviewThatIsAskedForDuringAPutBackComesWithTheEndOfTheScanAfterIt) {
    openReady();
    startSweep();
    finish();
    app.window()->putBack()->start();
    ASSERT_TRUE(sample.runner.runUntil([this] { return app.library().isPuttingBack.get(); }));
    app.notifications().post(NotificationName::kShowOverview);
    app.notifications().post(NotificationName::kOpenSweepPreview);
    ASSERT_TRUE(sample.runner.runUntil([this] { return !app.library().isPuttingBack.get(); }));
    draw();
    ASSERT_NE(app.window()->putBack()->alert(), nullptr);
    app.window()->putBack()->alert()->accept();
    draw();
    ASSERT_NE(app.library().phase.get().kind, Kind::ready);
    EXPECT_EQ(app.window()->findChild<SweepPreviewSheet*>(), nullptr);
    finish();
    ASSERT_EQ(app.library().phase.get().kind, Kind::ready);
    EXPECT_NE(app.window()->findChild<SweepPreviewSheet*>(), nullptr);
}

TEST_F(LifeOfTheProgram, AutomationSettingsOpensTheSettingsWithoutTheWindow) {
    openReady();
    closeWindow();
    choose(&MenuBarView::settingsButton);
    ASSERT_NE(app.settings(), nullptr);
    EXPECT_EQ(app.settings()->tab(), Scenes::SettingsTab::automation);
    EXPECT_EQ(app.window(), nullptr);
}

TEST_F(LifeOfTheProgram, AnotherWindowThatOpensClosesThePopover) {
    openReady();
    for (const bool isSettings : {false, true}) {
        sample.clock.advance(1s);
        sample.menuBarExtra.press();
        turn();
        ASSERT_NE(app.menuBarItem().popover(), nullptr);
        isSettings ? app.showSettings(Scenes::SettingsTab::general) : app.showWindow();
        EXPECT_EQ(app.menuBarItem().popover(), nullptr);
    }
}

TEST_F(LifeOfTheProgram, WithoutAWindowAScheduledScanStillChangesTheFigure) {
    sample.defaults.set(DefaultsKeys::kScheduledScans, true);
    openReady();
    closeWindow();
    const auto before = sample.menuBarExtra.figure;
    EXPECT_NE(before, "");
    app.library().orphans = std::vector<OrphanItem>();
    app.library().apps = std::vector<InstalledApp>();
    turn();
    EXPECT_NE(sample.menuBarExtra.figure, before);
    sample.clock.advance(1h);
    sample.clock.advance(2s);
    draw();
    EXPECT_EQ(sample.menuBarExtra.figure, before);
    EXPECT_EQ(ends, 0);
}

TEST_F(LifeOfTheProgram, AFigureThatWasTypedIsTakenInBeforeTheEnd) {
    sample.defaults.set(DefaultsKeys::kNudgeOnThreshold, true);
    app.showSettings(Scenes::SettingsTab::automation);
    app.settings()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(app.settings()));
    auto* const stepper = app.settings()->findChild<Stepper*>();
    stepper->setFocus();
    stepper->selectAll();
    QTest::keyClicks(stepper, "12");
    ASSERT_NE(stepper->value(), 12);
    askToQuit(); // as the key does
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(sample.defaults.integer(DefaultsKeys::kThresholdGB), 12);
}

// In the dock of a Mac

TEST_F(LifeOfTheProgram, InTheDockItGoesOnWithoutAWindowAndWithoutAnItem) {
    app.liveInDock();
    wishItem(false);
    openReady();
    closeWindow();
    wishItem(true);
    setPanel(false);
    sample.clock.advance(1h);
    turn();
    wishItem(false);
    turn();
    EXPECT_EQ(ends, 0);
    app.quit();
    turn();
    EXPECT_EQ(ends, 1);
}

TEST_F(LifeOfTheProgram, InTheDockAClickThereOpensTheWindowWhenNoneIsOpen) {
    app.liveInDock();
    openReady();
    closeWindow();
    ASSERT_EQ(app.window(), nullptr);
    emit qApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_EQ(app.window(), nullptr);
    emit qApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_NE(app.window(), nullptr);
}

TEST_F(LifeOfTheProgram, InTheDockAWindowThatIsOpenIsLeftAsItIs) {
    app.liveInDock();
    openReady();
    app.showSettings(Scenes::SettingsTab::general);
    closeWindow();
    emit qApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(app.window(), nullptr) << "the settings are one";
}

TEST_F(LifeOfTheProgram, InTheDockAPressOnTheItemOpensThePopoverAlone) {
    app.liveInDock();
    openReady();
    closeWindow();
    sample.menuBarExtra.press();
    turn();
    ASSERT_NE(app.menuBarItem().popover(), nullptr);
    emit qApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(app.window(), nullptr);
}

TEST_F(LifeOfTheProgram, WithoutADockBecomingActiveOpensNothing) {
    openReady();
    closeWindow();
    emit qApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(app.window(), nullptr);
}
