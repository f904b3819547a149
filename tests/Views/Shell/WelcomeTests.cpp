// When the welcome lies over the window, and what waits for its end.
#include "Components/Look.h"
#include "Components/PushButton.h"
#include "Components/SearchField.h"
#include "Onboarding/OnboardingView.h"
#include "Overview/OverviewView.h"
#include "Review/PutBack.h"
#include "Review/SweepPreviewSheet.h"
#include "Shell/Sidebar.h"
#include "WindowTest.h"

namespace quillane {
namespace {

using Kind = AppLibrary::Phase::Kind;

// The window of somebody who has never been welcomed.
class Welcome : public WindowTest {
  protected:
    Welcome() {
        Look::setReducedMotion(true);
        fakes.defaults.clear(DefaultsKeys::kHasSeenOnboarding);
        auto app = measuredApp("Alder", 1'000'000);
        app.leftovers = {leftover("/Users/alex/Library/Caches/Alder", "Caches", 4096)};
        app.leftovers.front().isCache = true;
        apps = {app};
    }
    ~Welcome() override {
        window.reset();
        Look::setReducedMotion(false);
    }

    void launch(Kind phase = Kind::ready) {
        library.phase = AppLibrary::Phase{phase};
        library.apps = apps;
        window = std::make_unique<ContentView>(library, notifications);
        window->show();
        window->activateWindow();
        turn();
    }
    // The window of somebody who has been welcomed.
    void launchLater() {
        fakes.defaults.set(DefaultsKeys::kHasSeenOnboarding, true);
        launch();
    }
    void askForIt() {
        notifications.post(NotificationName::kShowOnboarding);
        turn();
    }
    OnboardingView* sheet() const { return window->onboarding(); }
    void skip() {
        sheet()->skipButton()->click();
        turn();
    }
    OverviewView& overview() const {
        return *qobject_cast<OverviewView*>(window->content(LibrarySection::overview));
    }
    int sheetsOpen() const {
        int count = 0;
        for (const auto* const open : window->findChildren<Sheet*>()) {
            count += open->isVisible() ? 1 : 0;
        }
        return count;
    }
    void putBack() {
        library.lastOperation = std::optional<UndoableOperation>({"Clean Now", clock.now(), {}, 1});
        window->putBack()->start();
    }

    std::vector<InstalledApp> apps;
};

// When it comes

TEST_F(Welcome, AtTheFirstLaunchItIsUpOverTheOverviewAndTheScanRunsBehindIt) {
    launch(Kind::idle);
    ASSERT_NE(sheet(), nullptr);
    EXPECT_TRUE(sheet()->isVisible());
    EXPECT_EQ(sheet()->page(), 0);
    EXPECT_EQ(sheet()->parentWidget(), window.get());
    EXPECT_TRUE(window->state().showOnboarding.get());
    EXPECT_EQ(window->state().section.get(), LibrarySection::overview);
    EXPECT_NE(library.phase->kind, Kind::idle);
    finish();
    EXPECT_EQ(library.phase->kind, Kind::ready);
    EXPECT_TRUE(sheet()->isVisible()) << "the end of the scan ends nothing";
}

TEST_F(Welcome, WhoHasSeenItMeetsTheWindowAlone) {
    launchLater();
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_FALSE(window->state().showOnboarding.get());
}

TEST_F(Welcome, ItDoesNotOpenBeforeItsWindow) {
    window = std::make_unique<ContentView>(library, notifications);
    turn();
    EXPECT_EQ(sheet(), nullptr);
    window->show();
    turn();
    EXPECT_NE(sheet(), nullptr);
}

TEST_F(Welcome, SkippedItIsGoneForGood) {
    launch();
    skip();
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_FALSE(window->state().showOnboarding.get());
    EXPECT_EQ(sheetsOpen(), 0);
    window.reset();
    launch();
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(Welcome, AnEndInItsMiddleBringsItBackAtTheNextLaunch) {
    launch();
    sheet()->goForward();
    window.reset();
    EXPECT_FALSE(fakes.defaults.isStored(DefaultsKeys::kHasSeenOnboarding));
    launch();
    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(sheet()->page(), 0);
}

TEST_F(Welcome, ClosedByTheWindowManagerItComesBackWithTheNextWindowAndNoSooner) {
    launch();
    sheet()->close();
    turn();
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_FALSE(window->state().showOnboarding.get());
    window.reset();
    launch();
    EXPECT_NE(sheet(), nullptr);
}

TEST_F(Welcome, AskedForAgainItRunsFromItsFirstPageThoughItIsDone) {
    launchLater();
    for (int time = 0; time < 2; ++time) {
        askForIt();
        ASSERT_NE(sheet(), nullptr);
        EXPECT_EQ(sheet()->page(), 0);
        sheet()->goForward();
        sheet()->goForward();
        skip();
        EXPECT_EQ(sheet(), nullptr);
    }
    EXPECT_TRUE(fakes.defaults.boolean(DefaultsKeys::kHasSeenOnboarding));
}

TEST_F(Welcome, AskedForWhileItIsUpItStaysOnItsPage) {
    launch();
    sheet()->goForward();
    askForIt();
    EXPECT_EQ(sheet()->page(), 1);
    EXPECT_EQ(sheetsOpen(), 1);
    skip();
    EXPECT_EQ(sheet(), nullptr);
}

// What it waits for

TEST_F(Welcome, ItWaitsForAReviewOfTheOverviewToClose) {
    launchLater();
    overview().openReview();
    askForIt();
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1);
    overview().review()->reject();
    turn();
    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1);
}

TEST_F(Welcome, ItWaitsForAReviewOfASectionToClose) {
    launchLater();
    window->presentRemoval(library.removalForCache(library.apps->front()));
    askForIt();
    askForIt();
    EXPECT_EQ(sheet(), nullptr);
    window->removalSheet()->reject();
    turn();
    EXPECT_NE(sheet(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1);
}

TEST_F(Welcome, ItWaitsForThePutBackThatRunsAndForItsReport) {
    launchLater();
    putBack();
    askForIt();
    EXPECT_EQ(sheet(), nullptr);
    finish();
    ASSERT_NE(window->putBack()->alert(), nullptr);
    EXPECT_EQ(sheet(), nullptr);
    window->putBack()->alert()->accept();
    turn();
    EXPECT_NE(sheet(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1);
}

TEST_F(Welcome, ItComesAlsoWhenTheSheetItWaitsForGoesWithoutAWord) {
    launchLater();
    overview().openReview();
    askForIt();
    delete overview().review();
    turn();
    EXPECT_NE(sheet(), nullptr);
}

TEST_F(Welcome, TheWindowMayGoWhileItWaits) {
    launchLater();
    overview().openReview();
    askForIt();
    window.reset();
    turn();
    EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(Welcome, ItClosesTheLookAtAFile) {
    launchLater();
    disk.file("Users/alex/a.txt", "text");
    window->state().quickLookURL = std::optional(FileURL("/Users/alex/a.txt"));
    turn();
    askForIt();
    EXPECT_NE(sheet(), nullptr);
    EXPECT_FALSE(window->state().quickLookURL.get().has_value());
}

// What waits for it

TEST_F(Welcome, AReviewThatTheMenuBarAsksForOpensAtItsEnd) {
    launch();
    notifications.post(NotificationName::kShowOverview);
    notifications.post(NotificationName::kOpenSweepPreview);
    notifications.post(NotificationName::kOpenSweepPreview);
    turn();
    EXPECT_EQ(overview().review(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1);
    skip();
    ASSERT_NE(overview().review(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1);
    overview().review()->reject();
    turn();
    askForIt();
    skip();
    EXPECT_EQ(overview().review(), nullptr) << "it was asked for once";
}

TEST_F(Welcome, AReviewThatHasNothingLeftAtItsEndDoesNotOpen) {
    launch();
    notifications.post(NotificationName::kOpenSweepPreview);
    publish({});
    skip();
    EXPECT_EQ(overview().review(), nullptr);
    EXPECT_EQ(sheetsOpen(), 0);
}

TEST_F(Welcome, ARemovalOpensAtItsEnd) {
    launch();
    window->presentRemoval(library.removalForCache(library.apps->front()));
    turn();
    EXPECT_EQ(window->removalSheet(), nullptr);
    EXPECT_TRUE(window->state().removal.get().has_value());
    skip();
    ASSERT_NE(window->removalSheet(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1);
    window->removalSheet()->reject();
    turn();
    EXPECT_FALSE(window->state().removal.get().has_value());
}

TEST_F(Welcome, WhatIsAskedForWhileItWaitsItselfComesAfterIt) {
    launchLater();
    putBack();
    finish();
    publish(apps);
    askForIt();
    notifications.post(NotificationName::kOpenSweepPreview);
    window->presentRemoval(library.removalForCache(apps.front()));
    turn();
    EXPECT_EQ(sheetsOpen(), 1) << "the report";
    window->putBack()->alert()->accept();
    turn();
    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1);
    skip();
    EXPECT_NE(window->removalSheet(), nullptr);
    EXPECT_EQ(overview().review(), nullptr) << "never two";
    EXPECT_EQ(sheetsOpen(), 1);
}

// What waits for another sheet

TEST_F(Welcome, AReviewThatIsAskedForUnderTheReportOfAPutBackOpensAtItsEnd) {
    launchLater();
    putBack();
    finish();
    publish(apps);
    notifications.post(NotificationName::kOpenSweepPreview);
    turn();
    EXPECT_EQ(overview().review(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1) << "the report";
    window->putBack()->alert()->accept();
    turn();
    ASSERT_NE(overview().review(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1);
    overview().review()->reject();
    turn();
    EXPECT_EQ(sheetsOpen(), 0) << "it was asked for once";
}

TEST_F(Welcome, ARemovalThatIsAskedForUnderTheReportOfAPutBackOpensAtItsEnd) {
    launchLater();
    putBack();
    finish();
    window->presentRemoval(library.removalForCache(apps.front()));
    turn();
    EXPECT_EQ(window->removalSheet(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1) << "the report";
    window->putBack()->alert()->accept();
    turn();
    EXPECT_NE(window->removalSheet(), nullptr);
    EXPECT_EQ(sheetsOpen(), 1);
}

TEST_F(Welcome, ARemovalThatIsAskedForUnderTheReviewOfTheOverviewIsDropped) {
    launchLater();
    overview().openReview();
    window->presentRemoval(library.removalForCache(apps.front()));
    turn();
    EXPECT_FALSE(window->state().removal.get().has_value());
    EXPECT_EQ(sheetsOpen(), 1);
    overview().review()->reject();
    turn();
    EXPECT_EQ(sheetsOpen(), 0);
}

// The window behind it

TEST_F(Welcome, TheKeysOfTheWindowRestMeanwhile) {
    launch();
    library.lastOperation = std::optional<UndoableOperation>({"Clean Now", clock.now(), {}, 1});
    turn();
    QApplication::setActiveWindow(sheet());
    runner.clearHistory();
    for (const int key : {Qt::Key_R, Qt::Key_Z, Qt::Key_F, Qt::Key_2, Qt::Key_7}) {
        QTest::keyClick(sheet()->focusWidget(), static_cast<Qt::Key>(key), Qt::ControlModifier);
        QTest::keyClick(window.get(), static_cast<Qt::Key>(key), Qt::ControlModifier);
        turn();
    }
    EXPECT_EQ(library.phase->kind, Kind::ready) << "no scan";
    EXPECT_TRUE(runner.history().empty());
    EXPECT_FALSE(window->state().isPuttingBack.get());
    EXPECT_TRUE(library.lastOperation->has_value());
    EXPECT_EQ(window->state().section.get(), LibrarySection::overview);
    EXPECT_FALSE(window->searchField()->hasFocus());
    EXPECT_EQ(sheetsOpen(), 1);
}

TEST_F(Welcome, AClickOnANotificationGoesToItsSectionBehindIt) {
    launch();
    notifications.post(NotificationName::kShowSection, "Startup");
    turn();
    EXPECT_EQ(window->state().section.get(), LibrarySection::startup);
    EXPECT_EQ(sheetsOpen(), 1);
}

TEST_F(Welcome, AtItsEndTheWindowHasTheKeyboardAgain) {
    launchLater();
    overview().setFocus();
    QWidget* const before = window->focusWidget();
    askForIt();
    skip();
    EXPECT_EQ(window->focusWidget(), before);
    EXPECT_TRUE(window->isActiveWindow());
}

} // namespace
} // namespace quillane
