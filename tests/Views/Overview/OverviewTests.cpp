#include "Components/AccessBanner.h"
#include "Components/Badge.h"
#include "Components/EmptyState.h"
#include "Components/Label.h"
#include "Components/ListRow.h"
#include "Components/Look.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/PushButton.h"
#include "Components/ResultAlertButtons.h"
#include "Components/Rule.h"
#include "Components/SearchField.h"
#include "Components/Spinner.h"
#include "Components/SymbolView.h"
#include "Components/Tile.h"
#include "Components/ToolbarRow.h"
#include "Overview/AccessNotice.h"
#include "Overview/CategoryRow.h"
#include "Overview/CompositionBar.h"
#include "Overview/Hero.h"
#include "Overview/OverviewDetailView.h"
#include "Overview/OverviewView.h"
#include "Overview/PutBackCard.h"
#include "RemovalWorld.h"
#include "Review/PutBack.h"
#include "Review/SweepDoneStage.h"
#include "Review/SweepReviewModel.h"
#include "Review/SweepReviewStage.h"
#include "SectionRecords.h"
#include "Shell/BrandButton.h"
#include "Shell/Sidebar.h"
#include "WindowPicture.h"
#include "WindowTest.h"
#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QStringList>
#include <algorithm>

using namespace quillane;
using Kind = AppLibrary::Phase::Kind;

namespace {

InstalledApp appWithCache(const std::string& name, Bytes bytes) {
    auto app = measuredApp(name, 1'000'000);
    app.leftovers = {leftover("/Users/alex/Library/Caches/" + name, "Caches", bytes)};
    app.leftovers.front().isCache = true;
    return app;
}

class Overview : public WindowTest {
  protected:
    Overview() {
        startsIn = LibrarySection::overview;
        Look::setReducedMotion(true);
    }
    ~Overview() override {
        Look::setReducedMotion(false);
        Look::setDark(false);
    }

    static std::vector<InstalledApp> caches(int count, Bytes first = 1'000'000) {
        std::vector<InstalledApp> apps;
        for (int i = 0; i < count; ++i)
            apps.push_back(appWithCache("App " + std::to_string(i), first * (i + 1)));
        return apps;
    }
    UndoableOperation operation(int moves = 1) const {
        UndoableOperation operation{"Clean Now", clock.now().addingSeconds(-86'400), {}, 4'070'000'000};
        for (int i = 0; i < moves; ++i) {
            operation.moves.push_back({FileURL("/Users/alex/" + std::to_string(i)),
                                       FileURL("/Users/alex/.Trash/" + std::to_string(i))});
        }
        return operation;
    }
    OverviewView& view() const {
        return *qobject_cast<OverviewView*>(window->content(LibrarySection::overview));
    }
    OverviewDetailView& pane() const {
        return *qobject_cast<OverviewDetailView*>(window->detail(LibrarySection::overview));
    }
    Hero& hero() const { return *view().hero(); }
    CategoryRow& row(SweepCategory category) const {
        return **std::ranges::find(view().rows(), category, &CategoryRow::category);
    }
    QPushButton& putBack() const { return *view().putBackCard()->putBackButton(); }
    static void click(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton); }
    static QStringList titles(const Panel* panel) {
        QStringList titles;
        for (const auto* const row : panel->findChildren<ListRow*>())
            titles << row->title();
        return titles;
    }
    QAction& command(const QString& text) const {
        const auto actions = window->actions();
        return **std::ranges::find(actions, text, &QAction::text);
    }
};

} // namespace

TEST_F(Overview, TheCardsStandInTheirOrderFromTheTop) {
    library.accessJustGranted = true;
    library.inaccessible = std::unordered_set{FileURL("/a")};
    library.lastOperation = operation();
    openReady(caches(1));
    std::vector<QWidget*> cards{&hero(), view().grantedNotice()};
    cards.insert(cards.end(), view().rows().begin(), view().rows().end());
    cards.insert(cards.end(), {view().accessNotice(), view().putBackCard()});
    int bottom = 0;
    for (const auto* const card : cards) {
        EXPECT_TRUE(card->isVisible());
        const int top = card->mapTo(&view(), QPoint()).y();
        EXPECT_GE(top, bottom) << card->metaObject()->className();
        bottom = top + card->height();
    }
}

// The hero

TEST_F(Overview, TheWindowStartsHere) {
    EXPECT_EQ(initialSection(), LibrarySection::overview);
    openReady({});
    EXPECT_EQ(window->header()->title(), "Overview");
}

TEST_F(Overview, EachPhaseOfTheScanHasItsLabel) {
    for (const auto& [phase, words] : {
             std::pair{AppLibrary::Phase{Kind::idle}, "Ready"},
             {AppLibrary::Phase{Kind::scanning}, "Finding applications…"},
             {AppLibrary::Phase{Kind::measuring, 38, 64}, "Measuring 38 of 64…"},
             {AppLibrary::Phase{Kind::findingOrphans}, "Looking for orphaned files…"},
             {AppLibrary::Phase{Kind::findingDeveloperCaches}, "Measuring developer caches…"},
             {AppLibrary::Phase{Kind::ready}, ""},
         })
        EXPECT_EQ(Hero::scanLabel(phase), QString::fromUtf8(words));
}

TEST_F(Overview, ReadyTheHeroShowsTheFigureAndLeadsToTheReview) {
    openReady(caches(2));
    EXPECT_EQ(hero().heading()->text(), "RECLAIMABLE NOW");
    EXPECT_TRUE(hero().figure()->isVisible());
    EXPECT_FALSE(hero().progress()->isVisible());
    EXPECT_EQ(hero().figure()->text(), "3 MB");
    EXPECT_EQ(hero().button()->label(), "Review and Clean");
    EXPECT_EQ(hero().button()->symbol(), "sparkles");
    EXPECT_TRUE(hero().button()->isEnabled());
    EXPECT_EQ(hero().sentence()->text(),
              "Opens a full list of every file first. Nothing moves until you confirm it there, and Quillane "
              "never cleans on a schedule or at launch.");
}

TEST_F(Overview, WhileAScanRunsTheHeroShowsItsLabelAndTheRowsSpinAndNothingCanBePutBack) {
    library.lastOperation = operation();
    open({Kind::measuring, 38, 64}, caches(2));
    EXPECT_FALSE(hero().figure()->isVisible());
    EXPECT_EQ(hero().progress()->text(), QString::fromUtf8("Measuring 38 of 64…"));
    EXPECT_TRUE(hero().progress()->isVisible());
    EXPECT_FALSE(hero().button()->isEnabled());
    EXPECT_TRUE(hero().bar()->parts().empty());
    for (const auto* const each : view().rows()) {
        EXPECT_TRUE(each->spinner()->isVisible());
        EXPECT_FALSE(each->size()->isVisible());
        EXPECT_FALSE(each->count()->isVisible());
    }
    EXPECT_FALSE(putBack().isEnabled());
}

TEST_F(Overview, WithNothingTickedThereIsNothingToReview) {
    library.sweepSelection = std::set<SweepCategory>();
    openReady(caches(2));
    EXPECT_EQ(library.selectedSweepBytes(), 0);
    EXPECT_EQ(hero().figure()->text(), "Zero KB");
    EXPECT_FALSE(hero().button()->isEnabled());
}

TEST_F(Overview, OneByteIsEnoughToSweepAndNothingElseIs) {
    library.phase = AppLibrary::Phase{Kind::ready};
    library.apps = std::vector{appWithCache("One", 1)};
    EXPECT_TRUE(Hero::canSweep(library));
    library.apps = std::vector{appWithCache("None", 0)};
    EXPECT_FALSE(Hero::canSweep(library));
    library.apps = caches(1);
    library.isSweeping = true;
    EXPECT_FALSE(Hero::canSweep(library));
    library.isSweeping = false;
    library.isPuttingBack = true;
    EXPECT_FALSE(Hero::canSweep(library));
    library.isPuttingBack = false;
    EXPECT_TRUE(Hero::canSweep(library));
    for (const auto kind :
         {Kind::idle, Kind::scanning, Kind::measuring, Kind::findingOrphans, Kind::findingDeveloperCaches}) {
        library.phase = AppLibrary::Phase{kind};
        EXPECT_FALSE(Hero::canSweep(library));
    }
}

TEST_F(Overview, WhileASweepRunsTheButtonSaysSoAndNothingCanBePutBack) {
    library.lastOperation = operation();
    library.isSweeping = true;
    openReady(caches(1));
    EXPECT_EQ(hero().button()->label(), "Cleaning");
    EXPECT_FALSE(hero().button()->isEnabled());
    EXPECT_FALSE(putBack().isEnabled());
    library.isSweeping = false;
    turn();
    EXPECT_EQ(hero().button()->label(), "Review and Clean");
    EXPECT_TRUE(putBack().isEnabled());
}

TEST_F(Overview, WhileAPutBackRunsNoReviewOpensAndAfterwardsOneDoes) {
    library.lastOperation = operation();
    openReady(caches(1));
    click(&putBack());
    turn();
    ASSERT_TRUE(*library.isPuttingBack);
    EXPECT_FALSE(hero().button()->isEnabled());
    view().openReview();
    EXPECT_EQ(window->findChild<SweepPreviewSheet*>(), nullptr);
    finish();
    library.apps = caches(1); // the scan that followed found none
    turn();
    EXPECT_TRUE(hero().button()->isEnabled());
}

TEST_F(Overview, WhileASweepRunsNeitherCommandNorKeyPutsBack) {
    library.lastOperation = operation();
    library.isSweeping = true;
    openReady({});
    EXPECT_FALSE(command("Put Back Last Cleanup").isEnabled());
    window->putBack()->start();
    press(Qt::Key_Z, Qt::ControlModifier);
    finish();
    EXPECT_TRUE(library.lastOperation->has_value());
    EXPECT_EQ(window->putBack()->alert(), nullptr);
    library.isSweeping = false;
    turn();
    EXPECT_TRUE(command("Put Back Last Cleanup").isEnabled());
}

TEST_F(Overview, TheBarIsMadeOfTheTickedCategories) {
    library.trashState = TrashSweeper::State::measured(2'000'000, 3);
    openReady(caches(1));
    using Parts = std::vector<CompositionBar::Part>;
    EXPECT_EQ(hero().bar()->parts(), (Parts{{SweepCategory::caches, 1'000'000}}));
    click(row(SweepCategory::trash).checkBox());
    turn();
    EXPECT_EQ(hero().bar()->parts(),
              (Parts{{SweepCategory::caches, 1'000'000}, {SweepCategory::trash, 2'000'000}}));
}

// The categories

TEST_F(Overview, FourCategoriesStandInTheirOrderWithTheirWords) {
    openReady({});
    std::vector<SweepCategory> shown;
    for (const auto* const each : view().rows()) {
        shown.push_back(each->category());
        EXPECT_EQ(each->title()->text(), QString::fromUtf8(rawValue(each->category()).data()));
        EXPECT_EQ(each->sentence()->text(), QString::fromUtf8(description(each->category()).data()));
        EXPECT_EQ(each->findChild<Tile*>()->symbol(), QString::fromUtf8(symbol(each->category()).data()));
        EXPECT_EQ(each->permanent() != nullptr, each->category() == SweepCategory::trash);
        EXPECT_EQ(each->checkBox()->isChecked(), each->category() != SweepCategory::trash);
    }
    using enum SweepCategory;
    EXPECT_EQ(shown, (std::vector{caches, developer, orphans, trash}));
    EXPECT_EQ(row(trash).permanent()->text(), "PERMANENT");
}

TEST_F(Overview, ADividerStandsBetweenEachTwoCategories) {
    openReady({});
    QStringList order;
    const auto* const panel = view().rows().front()->parentWidget();
    const auto* const column = panel->layout()->itemAt(0)->layout();
    for (int i = 0; i < column->count(); ++i)
        order << column->itemAt(i)->widget()->metaObject()->className();
    const QString row = "quillane::CategoryRow";
    const QString rule = "quillane::Rule";
    EXPECT_EQ(order, QStringList({row, rule, row, rule, row, rule, row}));
}

TEST_F(Overview, UntilTheScanHasEndedNoRowShowsAFigure) {
    open({Kind::scanning}, caches(1));
    for (const auto kind :
         {Kind::idle, Kind::scanning, Kind::measuring, Kind::findingOrphans, Kind::findingDeveloperCaches}) {
        library.phase = AppLibrary::Phase{kind};
        turn();
        EXPECT_TRUE(row(SweepCategory::caches).spinner()->isVisible());
        EXPECT_FALSE(row(SweepCategory::caches).size()->isVisible());
    }
    library.phase = AppLibrary::Phase{Kind::ready};
    turn();
    EXPECT_TRUE(row(SweepCategory::caches).size()->isVisible());
}

TEST_F(Overview, EachCategoryCountsInItsOwnWord) {
    for (const auto& [category, one, two] : {
             std::tuple{SweepCategory::caches, "1 app", "2 apps"},
             {SweepCategory::developer, "1 location", "2 locations"},
             {SweepCategory::orphans, "1 dead app", "2 dead apps"},
             {SweepCategory::trash, "1 item", "2 items"},
         }) {
        EXPECT_EQ(CategoryRow::countText(category, 1), one);
        EXPECT_EQ(CategoryRow::countText(category, 2), two);
    }
}

TEST_F(Overview, AMeasuredRowShowsSizeAndCount) {
    library.trashState = TrashSweeper::State::measured(6'310'000'000, 214);
    openReady(caches(2));
    EXPECT_EQ(row(SweepCategory::caches).size()->text(), "3 MB");
    EXPECT_EQ(row(SweepCategory::caches).count()->text(), "2 apps");
    EXPECT_EQ(row(SweepCategory::trash).size()->text(), "6.31 GB");
    EXPECT_EQ(row(SweepCategory::trash).count()->text(), "214 items");
    EXPECT_FALSE(row(SweepCategory::caches).spinner()->isVisible());
    EXPECT_FALSE(row(SweepCategory::trash).grantButton()->isVisible());
}

TEST_F(Overview, WhatIsFoundShowsWithWhatACleanupWouldTakeOfIt) {
    library.orphans = std::vector{orphan("com.acme.draw", "com.acme", 3'000'000),
                                  orphan("com.acme.draw.helper", "com.acme", 2'000'000),
                                  orphan("org.other.tool", "org.other", 1'000'000),
                                  adminOrphan("org.third.helper", "org.third", 50'000'000)};
    library.developerCaches =
        std::vector{devCache("npm", "Package cache", 7'000'000),
                    devCache("Python", "venv in tidepool", 90'000'000, false), // only when asked for
                    devCache("pip", "Wheel cache", 8'000'000)};
    openReady({});
    EXPECT_EQ(row(SweepCategory::orphans).size()->text(), "6 MB");
    EXPECT_EQ(row(SweepCategory::orphans).count()->text(), "2 dead apps");
    EXPECT_EQ(row(SweepCategory::developer).size()->text(), "15 MB");
    EXPECT_EQ(row(SweepCategory::developer).count()->text(), "2 locations");
    EXPECT_EQ(hero().figure()->text(), "21 MB");
    ASSERT_EQ(pane().panels().size(), 2U);
    const auto* const caches = pane().panels().front();
    EXPECT_EQ(caches->heading()->text(), "Developer Caches");
    EXPECT_EQ(titles(caches), QStringList({"pip - Wheel cache", "npm - Package cache"}));
    EXPECT_EQ(caches->findChild<ListRow*>()->subtitle(), "~/Library/pip/Wheel cache");
    EXPECT_EQ(caches->findChild<SymbolView*>()->symbol(), "hammer");
    const auto* const orphans = pane().panels().back();
    EXPECT_EQ(orphans->heading()->text(), "Orphaned Files");
    EXPECT_EQ(titles(orphans), QStringList({"com.acme.draw", "com.acme.draw", "org.other.tool"}));
    EXPECT_EQ(orphans->findChild<ListRow*>()->subtitle(), "Caches - com.acme.draw");
}

TEST_F(Overview, ARowTicksWhereverItIsClicked) {
    openReady(caches(1));
    auto& caches = row(SweepCategory::caches);
    for (QWidget* const place :
         {static_cast<QWidget*>(caches.checkBox()), static_cast<QWidget*>(caches.title()),
          static_cast<QWidget*>(caches.size()), static_cast<QWidget*>(&caches)}) {
        click(place);
        turn();
        EXPECT_FALSE(library.sweepSelection->contains(SweepCategory::caches));
        click(place);
        turn();
        EXPECT_TRUE(library.sweepSelection->contains(SweepCategory::caches));
    }
    QTest::mouseClick(&caches, Qt::RightButton);
    EXPECT_TRUE(library.sweepSelection->contains(SweepCategory::caches));
}

TEST_F(Overview, WithoutAccessTheTrashCannotBeTickedAndSaysHowItCould) {
    library.trashState = TrashSweeper::State::refused();
    openReady(caches(1));
    auto& trash = row(SweepCategory::trash);
    EXPECT_FALSE(trash.checkBox()->isEnabled());
    EXPECT_TRUE(trash.blocked()->isVisible());
    EXPECT_EQ(trash.blocked()->text(), "Can't see inside the Trash");
    EXPECT_EQ(trash.grantButton()->label(), QString::fromUtf8("Grant Full Disk Access…"));
    EXPECT_FALSE(trash.size()->isVisible());
    click(&trash);
    EXPECT_FALSE(library.sweepSelection->contains(SweepCategory::trash));
    EXPECT_TRUE(library.plan(SweepCategory::trash).empty());
    click(trash.grantButton());
    EXPECT_EQ(workspace.settingsOpened(), 1);
    EXPECT_TRUE(row(SweepCategory::caches).checkBox()->isEnabled());
}

TEST_F(Overview, WithoutAccessTheTrashShowsNoSpinnerWhileAScanRuns) {
    library.trashState = TrashSweeper::State::refused();
    open({Kind::scanning}, {});
    EXPECT_FALSE(row(SweepCategory::trash).spinner()->isVisible());
    EXPECT_TRUE(row(SweepCategory::trash).grantButton()->isVisible());
}

// Keyboard and assistive tools

TEST_F(Overview, SpaceTicksAndReturnOpensTheReview) {
    openReady(caches(1));
    ASSERT_TRUE(row(SweepCategory::caches).checkBox()->hasFocus());
    press(Qt::Key_Space);
    EXPECT_FALSE(library.sweepSelection->contains(SweepCategory::caches));
    press(Qt::Key_Return);
    EXPECT_EQ(view().review(), nullptr) << "nothing is ticked";
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    ASSERT_NE(view().review(), nullptr);
    view().review()->reject();
}

TEST_F(Overview, TabGoesThroughTheCardsFromTheTop) {
    library.trashState = TrashSweeper::State::measured(1, 1);
    library.inaccessible = std::unordered_set{FileURL("/a")};
    library.lastOperation = operation();
    openReady(caches(1));
    hero().button()->setFocus();
    std::vector<QWidget*> expected{hero().button()};
    for (const auto* const each : view().rows())
        expected.push_back(each->checkBox());
    expected.push_back(view().accessNotice()->grantButton());
    expected.push_back(&putBack());
    for (auto* const widget : expected) {
        EXPECT_EQ(QApplication::focusWidget(), widget);
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(QApplication::focusWidget(), window->sidebar()->brand()) << "nothing in the pane scrolls";
}

TEST_F(Overview, TabStopsAtThePaneWhileItScrolls) {
    std::vector<DevCacheItem> items;
    for (int i = 0; i < 6; ++i)
        items.push_back(devCache("Xcode", "Derived data " + std::to_string(i), 1'000'000));
    library.developerCaches = items;
    openReady(caches(6));
    window->resize(ContentView::kMinimumSize);
    turn();
    view().rows().back()->checkBox()->setFocus();
    press(Qt::Key_Tab);
    EXPECT_TRUE(pane().isAncestorOf(QApplication::focusWidget()));
}

TEST_F(Overview, ACheckBoxReadsItsTitleItsSizeAndWhatCannotComeBack) {
    library.trashState = TrashSweeper::State::measured(6'310'000'000, 214);
    openReady(caches(1));
    const auto name = [this](SweepCategory category) { return row(category).checkBox()->accessibleName(); };
    EXPECT_EQ(name(SweepCategory::caches), "App Caches, 1 MB");
    EXPECT_EQ(name(SweepCategory::trash), "Empty the Trash, 6.31 GB, permanent");
    library.phase = AppLibrary::Phase{Kind::scanning};
    turn();
    EXPECT_EQ(name(SweepCategory::trash), "Empty the Trash, permanent");
    library.trashState = TrashSweeper::State::refused();
    turn();
    EXPECT_EQ(name(SweepCategory::trash), "Empty the Trash, Can't see inside the Trash, permanent");
}

TEST_F(Overview, EveryControlThatTakesTheFocusHasAName) {
    library.trashState = TrashSweeper::State::refused();
    library.inaccessible = std::unordered_set{FileURL("/a")};
    library.lastOperation = operation();
    openReady(caches(1));
    for (auto* const widget : window->findChildren<QWidget*>()) {
        if (!widget->isVisible() || !(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy())
            continue;
        auto* const accessible = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(accessible, nullptr);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
    }
}

TEST_F(Overview, ReturnPressesTheButtonThatHasTheFocus) {
    library.inaccessible = std::unordered_set{FileURL("/a")};
    openReady(caches(1));
    view().accessNotice()->grantButton()->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(workspace.settingsOpened(), 1);
    EXPECT_EQ(view().review(), nullptr);
}

// The review

TEST_F(Overview, TheButtonOpensTheReviewOfAllThatIsTicked) {
    openReady(caches(3));
    click(hero().button());
    ASSERT_NE(view().review(), nullptr);
    EXPECT_EQ(view().review()->model().review().includedCount(), 3U);
    EXPECT_TRUE(view().review()->isModal());
    view().review()->reject();
}

TEST_F(Overview, TheReviewListsEveryTickedCategoryWithEveryRowTicked) {
    library.trashState = TrashSweeper::State::measured(2'000'000, 3);
    openReady(caches(2));
    click(row(SweepCategory::trash).checkBox());
    click(hero().button());
    const auto& review = view().review()->model().review();
    EXPECT_EQ(review.entries(), library.fullPlan());
    EXPECT_EQ(review.includedCount(), 3U);
    view().review()->reject();
}

TEST_F(Overview, TheNotificationOpensTheReviewOnceAndOnlyWhenThereIsSomething) {
    openReady({});
    notifications.post(NotificationName::kOpenSweepPreview);
    EXPECT_EQ(view().review(), nullptr);
    publish(caches(1));
    notifications.post(NotificationName::kOpenSweepPreview);
    const QPointer<SweepPreviewSheet> review = view().review();
    ASSERT_NE(review, nullptr);
    notifications.post(NotificationName::kOpenSweepPreview);
    EXPECT_EQ(view().review(), review);
    review->reject();
}

TEST_F(Overview, NoSecondReviewOpensWhileARemovalIsReviewed) {
    openReady(caches(1));
    window->state().removal = library.removalForCache(library.apps->front());
    turn();
    notifications.post(NotificationName::kOpenSweepPreview);
    EXPECT_EQ(view().review(), nullptr);
}

TEST_F(Overview, AReturnThatIsHeldDownOpensNoReview) {
    openReady(caches(1));
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &held);
    EXPECT_EQ(view().review(), nullptr);
}

TEST_F(Overview, TheNotificationToShowTheOverviewGoesHere) {
    startsIn = LibrarySection::applications;
    openReady({});
    notifications.post(NotificationName::kShowOverview);
    turn();
    EXPECT_EQ(window->header()->title(), "Overview");
}

// Access

TEST_F(Overview, TheNoticeCountsWhatTheSystemRefused) {
    openReady({});
    auto& notice = *view().accessNotice();
    EXPECT_FALSE(notice.isVisible());
    library.inaccessible = std::unordered_set{FileURL("/a")};
    turn();
    EXPECT_TRUE(notice.isVisible());
    EXPECT_EQ(notice.symbol(), "lock.shield");
    EXPECT_EQ(notice.title()->text(), "1 item blocked by macOS");
    EXPECT_EQ(notice.sentence()->text(),
              "These are left out of the total until Quillane has Full Disk Access.");
    EXPECT_EQ(notice.grantButton()->label(), QString::fromUtf8("Grant Access…"));
    library.inaccessible = std::unordered_set{FileURL("/a"), FileURL("/b"), FileURL("/c")};
    turn();
    EXPECT_EQ(notice.title()->text(), "3 items blocked by macOS");
    click(notice.grantButton());
    EXPECT_EQ(workspace.settingsOpened(), 1);
}

TEST_F(Overview, AccessThatWasJustGrantedIsAnnouncedWhereverTheUserIs) {
    openReady({});
    window->showSection(LibrarySection::developer);
    turn();
    EXPECT_EQ(view().grantedNotice()->accessibleName(), "");
    library.accessJustGranted = true;
    turn();
    EXPECT_EQ(view().grantedNotice()->accessibleName(), view().grantedNotice()->text());
}

TEST_F(Overview, FiguresThatChangeBehindAnotherSectionAreThereWhenTheOverviewComes) {
    openReady(caches(1));
    window->showSection(LibrarySection::developer);
    turn();
    publish(caches(2));
    turn();
    window->enterSection(LibrarySection::overview);
    EXPECT_EQ(hero().figure()->text(), "3 MB");
}

TEST_F(Overview, AccessThatWasJustGrantedIsTold) {
    openReady({});
    EXPECT_FALSE(view().grantedNotice()->isVisible());
    library.accessJustGranted = true;
    turn();
    EXPECT_TRUE(view().grantedNotice()->isVisible());
    EXPECT_EQ(view().grantedNotice()->text(),
              "Full Disk Access granted. Rescanning the folders that were hidden.");
    EXPECT_EQ(view().grantedNotice()->findChild<SymbolView*>()->symbol(), "checkmark.shield.fill");
    EXPECT_EQ(view().grantedNotice()->accessibleName(), view().grantedNotice()->text());
    library.accessJustGranted = false;
    turn();
    EXPECT_FALSE(view().grantedNotice()->isVisible());
}

// As many as make a sort that does not keep equals show it: 16 and fewer stay in order by chance.
TEST_F(Overview, OfManyOfEqualSizeThePaneListsTheFirst) {
    std::vector<InstalledApp> apps;
    for (int i = 10; i < 70; ++i) {
        apps.push_back(appWithCache("App " + std::to_string(i), 1'000'000));
    }
    openReady(apps);
    const auto rows = pane().findChildren<ListRow*>();
    ASSERT_GE(rows.size(), 5);
    const auto plan = library.fullPlan();
    for (qsizetype i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i]->title(), QString::fromStdString(plan[static_cast<std::size_t>(i)].title));
    }
}

TEST_F(Overview, TheBannerStandsOverEverySectionWhenReadyWithoutAccess) {
    library.trashState = TrashSweeper::State::refused();
    openReady({});
    for (const auto section : {LibrarySection::overview, LibrarySection::applications}) {
        window->showSection(section);
        turn();
        EXPECT_TRUE(window->accessBanner()->isVisible());
    }
    library.phase = AppLibrary::Phase{Kind::scanning};
    turn();
    EXPECT_FALSE(window->accessBanner()->isVisible());
    library.phase = AppLibrary::Phase{Kind::ready};
    library.trashState = TrashSweeper::State::measured(0, 0);
    turn();
    EXPECT_FALSE(window->accessBanner()->isVisible());
}

TEST_F(Overview, TheButtonsOfTheBannerOpenTheSettingsAndStartTheProgramAgain) {
    library.trashState = TrashSweeper::State::refused();
    openReady({});
    click(window->accessBanner()->grantButton());
    EXPECT_EQ(workspace.settingsOpened(), 1);
    EXPECT_EQ(workspace.relaunches(), 0);
    click(window->accessBanner()->relaunchButton());
    EXPECT_EQ(workspace.settingsOpened(), 1);
    EXPECT_EQ(workspace.relaunches(), 1);
}

TEST_F(Overview, TheProgramIsNotStartedAgainWhileSomethingMoves) {
    library.trashState = TrashSweeper::State::refused();
    openReady({});
    for (auto* const runs : {&library.isSweeping, &library.isPuttingBack}) {
        *runs = true;
        turn();
        ASSERT_TRUE(window->accessBanner()->isVisible());
        EXPECT_FALSE(window->accessBanner()->relaunchButton()->isEnabled());
        EXPECT_TRUE(window->accessBanner()->grantButton()->isEnabled());
        *runs = false;
        turn();
        EXPECT_TRUE(window->accessBanner()->relaunchButton()->isEnabled());
    }
}

TEST_F(Overview, ComingToTheFrontLooksForAccessAgain) {
    library.trashState = TrashSweeper::State::refused();
    openReady({});
    const auto tell = [](Qt::ApplicationState state) { emit qGuiApp->applicationStateChanged(state); };
    tell(Qt::ApplicationInactive);
    finish();
    EXPECT_TRUE(library.trashState->needsFullDiskAccess);
    tell(Qt::ApplicationActive);
    finish();
    EXPECT_FALSE(library.trashState->needsFullDiskAccess);
}

TEST_F(Overview, TheCommandOpensTheSettings) {
    openReady({});
    command(QString::fromUtf8("Grant Full Disk Access…")).trigger();
    EXPECT_EQ(workspace.settingsOpened(), 1);
}

// Putting back

TEST_F(Overview, TheLastCleanupIsToldAndCanGoBackWhenNothingRuns) {
    openReady({});
    EXPECT_FALSE(view().putBackCard()->isVisible());
    library.lastOperation = operation(118);
    turn();
    EXPECT_TRUE(view().putBackCard()->isVisible());
    EXPECT_EQ(view().putBackCard()->symbol(), "arrow.uturn.backward.circle.fill");
    EXPECT_EQ(view().putBackCard()->title()->text(), "Last cleanup: Clean Now");
    EXPECT_EQ(view().putBackCard()->sentence()->text(),
              "118 item(s), 4.07 GB, yesterday. Still in the Trash, so it can go back.");
    for (const auto kind : {Kind::idle, Kind::scanning, Kind::measuring, Kind::findingOrphans,
                            Kind::findingDeveloperCaches, Kind::ready}) {
        library.phase = AppLibrary::Phase{kind};
        turn();
        EXPECT_EQ(putBack().isEnabled(), kind == Kind::idle || kind == Kind::ready);
    }
}

TEST_F(Overview, APutBackThatFailsIsToldAndTheCardIsGoneAllTheSame) {
    library.lastOperation = operation(2);
    openReady({});
    click(&putBack());
    turn();
    EXPECT_FALSE(putBack().isEnabled()) << "one runs";
    finish();
    auto* const alert = window->putBack()->alert();
    ASSERT_NE(alert, nullptr);
    EXPECT_TRUE(alert->isModal());
    EXPECT_EQ(alert->title()->text(), "Put Back Finished");
    EXPECT_TRUE(alert->message()->text().startsWith("Restored 0 item(s) to their original locations"))
        << alert->message()->text().toStdString();
    EXPECT_TRUE(alert->message()->text().contains("2 item(s) failed"));
    EXPECT_FALSE(view().putBackCard()->isVisible());
    ASSERT_EQ(alert->buttons()->buttons().size(), 1U);
    click(alert->buttons()->buttons().front());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window->putBack()->alert(), nullptr);
}

TEST_F(Overview, WhatFailedForLackOfAccessOffersTheSettings) {
    openReady({});
    Uninstaller::Report report;
    report.failures = {{FileURL("/a"), "No access", true}};
    const QPointer alert =
        ResultAlert::presentPutBack(report, [this] { workspace.openFullDiskAccessSettings(); }, window.get());
    ASSERT_EQ(alert->buttons()->buttons().size(), 2U);
    EXPECT_TRUE(keepPicture(pictureOf(*alert), "put-back-alert"));
    click(alert->buttons()->buttons().front());
    EXPECT_EQ(workspace.settingsOpened(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(alert.isNull());
}

TEST_F(Overview, AWindowThatClosesMeanwhileDoesNotStopThePutBack) {
    library.lastOperation = operation();
    openReady({});
    click(&putBack());
    close();
    finish();
    EXPECT_FALSE(library.lastOperation->has_value());
}

TEST_F(Overview, TheKeysPutBackOnlyWhenThereIsSomething) {
    openReady({});
    EXPECT_FALSE(command("Put Back Last Cleanup").isEnabled());
    library.lastOperation = operation();
    turn();
    EXPECT_TRUE(command("Put Back Last Cleanup").isEnabled());
    press(Qt::Key_Z, Qt::ControlModifier);
    finish();
    EXPECT_FALSE(library.lastOperation->has_value());
    EXPECT_FALSE(command("Put Back Last Cleanup").isEnabled());
}

TEST_F(Overview, APutBackByKeyIsToldInWhateverSection) {
    openReady({});
    for (const auto& screen : standingScreens()) {
        library.lastOperation = operation(2);
        window->showSection(screen.section);
        turn();
        QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
        finish();
        auto* const alert = window->putBack()->alert();
        ASSERT_NE(alert, nullptr) << rawValue(screen.section);
        EXPECT_TRUE(alert->isVisible());
        EXPECT_EQ(alert->title()->text(), "Put Back Finished");
        EXPECT_TRUE(alert->message()->text().contains("2 item(s) failed"));
        EXPECT_FALSE(window->state().isPuttingBack.get());
        click(alert->buttons()->buttons().front());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(Overview, AReportThatComesOverAnOpenSheetGivesTheKeyboardBackToThatSheet) {
    library.lastOperation = operation();
    openReady(caches(1));
    click(&putBack());
    view().openReview();
    finish();
    auto* const alert = window->putBack()->alert();
    ASSERT_NE(alert, nullptr);
    ASSERT_NE(view().review(), nullptr);
    EXPECT_EQ(alert->parentWidget(), view().review());
    click(alert->buttons()->buttons().front());
    turn();
    EXPECT_TRUE(view().review()->isActiveWindow());
}

TEST_F(Overview, ATextFieldUndoesItsOwnTextFirst) {
    library.lastOperation = operation();
    openReady({});
    window->searchField()->setFocus();
    QTest::keyClicks(window->searchField(), "abc");
    press(Qt::Key_Z, Qt::ControlModifier);
    finish();
    EXPECT_EQ(window->searchField()->text(), "");
    EXPECT_TRUE(library.lastOperation->has_value());
}

// What's included

TEST_F(Overview, OfSevenRowsTheSixLargestShow) {
    openReady(caches(7));
    ASSERT_FALSE(pane().showsPlaceholder());
    EXPECT_EQ(pane().toolbar()->title(), "What's included");
    ASSERT_EQ(pane().panels().size(), 1U);
    const auto* const panel = pane().panels().front();
    EXPECT_EQ(panel->heading()->text(), "App Caches");
    EXPECT_EQ(titles(panel), QStringList({"App 6", "App 5", "App 4", "App 3", "App 2", "App 1"}));
    const auto* const first = panel->findChild<ListRow*>();
    EXPECT_EQ(first->subtitle(), "Caches - App 6");
    EXPECT_EQ(first->sizeText(), "7 MB");
    EXPECT_EQ(first->findChild<SymbolView*>()->symbol(), "sparkles");
}

TEST_F(Overview, RowsOfOneSizeKeepTheirOrder) {
    std::vector<InstalledApp> apps;
    for (int i = 0; i < 40; ++i) // more than a sort that moves them about leaves alone
        apps.push_back(appWithCache("App " + std::to_string(i), 5));
    apps.push_back(appWithCache("Cedar", 9));
    openReady(apps);
    EXPECT_EQ(titles(pane().panels().front()),
              QStringList({"Cedar", "App 0", "App 1", "App 2", "App 3", "App 4"}));
}

TEST_F(Overview, ALongPathKeepsItsEndInSight) {
    const auto pictureOfRow = [](const QString& end) {
        ListRow row(QStringLiteral("doc"), QStringLiteral("Title"),
                    "~/Library/" + QString(80, QLatin1Char('x')) + end, {});
        row.resize(200, row.sizeHint().height());
        return pictureOf(row);
    };
    EXPECT_NE(pictureOfRow(QStringLiteral("/one")), pictureOfRow(QStringLiteral("/two")));
}

TEST_F(Overview, OnlyTickedCategoriesAreIncluded) {
    library.trashState = TrashSweeper::State::measured(2'000'000, 3);
    openReady(caches(1));
    EXPECT_EQ(pane().panels().size(), 1U);
    click(row(SweepCategory::trash).checkBox());
    turn();
    ASSERT_EQ(pane().panels().size(), 2U);
    EXPECT_EQ(pane().panels().back()->heading()->text(), "Empty the Trash");
    EXPECT_EQ(titles(pane().panels().back()), QStringList("Everything in the Trash"));
}

TEST_F(Overview, WithNothingTickedThePaneSaysWhatToDo) {
    library.sweepSelection = std::set<SweepCategory>();
    openReady(caches(1));
    ASSERT_TRUE(pane().showsPlaceholder());
    EXPECT_EQ(pane().placeholder()->sentence(), "Tick a category to see what it includes.");
    EXPECT_EQ(pane().placeholder()->symbol(), "checklist");
    EXPECT_TRUE(pane().panels().empty());
}

TEST_F(Overview, TickedCategoriesThatHoldNothingLeaveThePlaceholder) {
    openReady({appWithCache("None", 0)});
    EXPECT_FALSE(library.fullPlan().empty());
    EXPECT_EQ(library.selectedSweepBytes(), 0);
    EXPECT_TRUE(pane().showsPlaceholder());
    publish(caches(1));
    turn();
    EXPECT_FALSE(pane().showsPlaceholder());
}

// From the review to the Trash and back, on a disk

namespace {

// The window over an application with a cache that lies on a disk.
class OverviewOnDisk : public testing::Test {
  protected:
    OverviewOnDisk() {
        world.disk.file("Users/alex/Library/Caches/Alder", "cached");
        library.phase = AppLibrary::Phase{Kind::ready};
        library.apps = std::vector{appWithCache("Alder", 4'096)};
        window.show();
    }

    void finish() {
        for (int i = 0; i < 4; ++i) {
            world.runner.runAll();
            QCoreApplication::processEvents();
        }
    }
    void sweep() {
        view.openReview();
        view.review()->reviewStage()->mainButton()->click();
        finish();
        EXPECT_FALSE(world.isThere(cache));
        view.review()->reject();
    }
    QPushButton& putBack() { return *view.putBackCard()->putBackButton(); }

    const FileURL cache{"/Users/alex/Library/Caches/Alder"};
    RemovalWorld world;
    Welcomed welcomed{world.defaults};
    AppLibrary library{world.platform};
    NotificationCenter notifications;
    ContentView window{library, notifications};
    OverviewView& view = *qobject_cast<OverviewView*>(window.content(LibrarySection::overview));
};

} // namespace

TEST_F(OverviewOnDisk, ASweepIsToldInTheCardAndPutBackFromThere) {
    sweep();
    EXPECT_TRUE(view.putBackCard()->isVisible());
    EXPECT_EQ(view.putBackCard()->title()->text(), "Last cleanup: Clean Now");
    putBack().click();
    putBack().click(); // before the first one is done it is the same one
    finish();
    EXPECT_TRUE(world.isThere(cache));
    EXPECT_FALSE(view.putBackCard()->isVisible());
    ASSERT_NE(window.putBack()->alert(), nullptr);
    EXPECT_EQ(window.putBack()->alert()->message()->text(),
              "Restored 1 item(s) to their original locations, reclaiming Zero KB.");
}

TEST_F(OverviewOnDisk, APutBackThatTheSystemRefusesSaysHowItCouldBeAllowed) {
    sweep();
    world.trash.failStep(world.trash.steps(), PlatformError{ErrorCode::kWriteNoPermission, 1});
    putBack().click();
    finish();
    EXPECT_FALSE(world.isThere(cache));
    EXPECT_FALSE(view.putBackCard()->isVisible());
    ASSERT_NE(window.putBack()->alert(), nullptr);
    EXPECT_TRUE(window.putBack()->alert()->message()->text().endsWith(
        "1 item(s) failed: macOS blocked access. Grant Full Disk Access to include them."));
    ASSERT_EQ(window.putBack()->alert()->buttons()->buttons().size(), 2U);
    window.putBack()->alert()->buttons()->buttons().front()->click();
    EXPECT_EQ(world.workspace.settingsOpened(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window.putBack()->alert(), nullptr);
}

// Layout

TEST_F(Overview, TheSmallestWindowNeedsNoScrollingSideways) {
    library.trashState = TrashSweeper::State::refused();
    library.inaccessible = std::unordered_set{FileURL("/a")};
    library.lastOperation = operation(118);
    openReady(caches(3, 1'234'567'890));
    window->resize(ContentView::kMinimumSize);
    turn();
    EXPECT_EQ(window->size(), ContentView::kMinimumSize);
    for (auto* const area : window->findChildren<QScrollArea*>()) {
        if (area->isVisible())
            EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
    }
}

TEST_F(Overview, IsDrawnInEveryState) {
    const auto keep = [this](const QString& name) {
        turn();
        const QImage picture = pictureOf(*window);
        EXPECT_TRUE(keepPicture(picture, name));
        return picture;
    };
    library.trashState = TrashSweeper::State::measured(6'310'000'000, 214);
    library.lastOperation = operation(118);
    openReady(caches(8, 310'000'000));
    const QImage light = keep("overview-light");
    window->resize(ContentView::kMinimumSize);
    EXPECT_NE(keep("overview-min-window").size(), light.size());
    window->resize(ContentView::kDefaultSize);
    click(row(SweepCategory::trash).checkBox());
    Look::setDark(true);
    EXPECT_NE(keep("overview-dark"), light);
    library.phase = AppLibrary::Phase{Kind::measuring, 38, 64};
    keep("overview-scanning-dark");
    Look::setDark(false);
    publish({});
    EXPECT_NE(keep("overview-scanning"), light);
    library.phase = AppLibrary::Phase{Kind::ready};
    library.trashState = TrashSweeper::State::refused();
    library.inaccessible = std::unordered_set{FileURL("/a"), FileURL("/b"), FileURL("/c")};
    publish(caches(8, 310'000'000));
    EXPECT_NE(keep("overview-needs-access"), light);
}
