#include "Components/FigureRow.h"
#include "Components/FittedLabel.h"
#include "Components/Label.h"
#include "Components/Look.h"
#include "Components/PushButton.h"
#include "Components/SymbolButton.h"
#include "MenuBar/MenuBarPopover.h"
#include "MenuBar/MenuBarView.h"
#include "MenuBarTest.h"
#include "WindowPicture.h"
#include <QAccessible>
#include <QSignalSpy>
#include <memory>

using namespace quillane;

namespace {

class MenuBarViews : public MenuBarTest {
  protected:
    ~MenuBarViews() override {
        Look::setDark(false);
        Look::setTextScale(1);
    }

    // In its window, as a press on the item opens it.
    MenuBarView& open() {
        popover = std::make_unique<MenuBarPopover>(library, QPoint(700, 10));
        popover->show();
        turn();
        return *popover->view();
    }
    // As where there are no popups of its kind.
    void openAsWindow() {
        popover = std::make_unique<MenuBarPopover>(library, QPoint(700, 10));
        popover->setWindowFlags(MenuBarPopover::typeOn("wayland") | Qt::FramelessWindowHint);
        popover->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(popover.get()));
    }
    static QStringList titles(const MenuBarView& view) {
        QStringList all;
        for (const auto* const row : view.rows())
            all << row->title();
        return all;
    }
    static QStringList figures(const MenuBarView& view) {
        QStringList all;
        for (const auto* const row : view.rows())
            all << row->figure();
        return all;
    }
    // Into what has the keyboard.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(popover->focusWidget(), key, modifiers);
    }
    QString focused() const {
        const auto* const button = qobject_cast<PushButton*>(popover->focusWidget());
        return button != nullptr ? button->label() : QString();
    }

    std::unique_ptr<MenuBarPopover> popover;
};

} // namespace

TEST_F(MenuBarViews, WhenReadyItShowsTheFigureUnderItsCaption) {
    const auto& view = open();
    EXPECT_EQ(view.heading()->text(), "RECLAIMABLE NOW");
    EXPECT_EQ(view.figure()->text(), "24.86 GB");
    EXPECT_TRUE(view.figure()->isVisible());
    EXPECT_FALSE(view.scanning()->isVisible());
}

TEST_F(MenuBarViews, InEveryOtherPhaseItSaysThatItScans) {
    auto& view = open();
    for (const auto kind :
         {Kind::idle, Kind::scanning, Kind::measuring, Kind::findingOrphans, Kind::findingDeveloperCaches}) {
        library.phase = AppLibrary::Phase{kind};
        turn();
        EXPECT_EQ(view.scanning()->text(), "Scanning…");
        EXPECT_TRUE(view.scanning()->isVisible());
        EXPECT_FALSE(view.figure()->isVisible());
    }
}

TEST_F(MenuBarViews, DuringAScanTheRowsShowADashAndRescanIsDisabled) {
    auto& view = open();
    EXPECT_TRUE(view.rescanButton()->isEnabled());
    for (const auto kind :
         {Kind::scanning, Kind::measuring, Kind::findingOrphans, Kind::findingDeveloperCaches}) {
        library.phase = AppLibrary::Phase{kind};
        turn();
        EXPECT_EQ(figures(view), QStringList({"—", "—", "—"}));
        EXPECT_FALSE(view.rescanButton()->isEnabled());
        EXPECT_FALSE(view.reviewButton()->isEnabled());
    }
}

TEST_F(MenuBarViews, BeforeAnyScanTheRowsShowADashAndRescanIsThere) {
    library.phase = AppLibrary::Phase{Kind::idle};
    const auto& view = open();
    EXPECT_EQ(figures(view), QStringList({"—", "—", "—"}));
    EXPECT_TRUE(view.rescanButton()->isEnabled());
    EXPECT_FALSE(view.reviewButton()->isEnabled());
}

TEST_F(MenuBarViews, RescanIsASymbolThatSaysItsNameAndStartsAScanOfTheUsers) {
    auto& view = open();
    EXPECT_EQ(view.rescanButton()->symbol(), "arrow.clockwise");
    EXPECT_EQ(view.rescanButton()->toolTip(), "Rescan");
    EXPECT_EQ(view.rescanButton()->accessibleName(), "Rescan");
    runner.clearHistory();
    QTest::mouseClick(view.rescanButton(), Qt::LeftButton);
    EXPECT_EQ(library.phase->kind, Kind::scanning);
    turn();
    EXPECT_FALSE(view.rescanButton()->isEnabled());
    ASSERT_FALSE(runner.history().empty());
    EXPECT_EQ(runner.history().front(), Priority::userInitiated);
}

TEST_F(MenuBarViews, EachTickedCategoryHasItsRowInTheOrderOfTheCategories) {
    library.sweepSelection = std::set(kAllSweepCategories.begin(), kAllSweepCategories.end());
    library.trashState = TrashSweeper::State::measured(5'000'000, 3);
    const auto& view = open();
    QStringList expected;
    for (const auto category : kAllSweepCategories)
        expected << QString::fromUtf8(rawValue(category).data());
    EXPECT_EQ(titles(view), expected);
    EXPECT_EQ(figures(view),
              QStringList({"9.42 GB", "12.87 GB", "2.57 GB", "5 MB", "Zero KB", "Zero KB", "Zero KB"}));
    for (std::size_t i = 0; i < kAllSweepCategories.size(); ++i)
        EXPECT_EQ(view.rows()[i]->symbol(), QString::fromUtf8(symbol(kAllSweepCategories[i]).data()));
}

TEST_F(MenuBarViews, ACategoryThatIsTurnedOffHasNoRowAndDoesNotCount) {
    library.sweepSelection = std::set{SweepCategory::orphans, SweepCategory::caches};
    const auto& view = open();
    EXPECT_EQ(titles(view), QStringList({"App Caches", "Orphaned Files"}));
    EXPECT_EQ(view.figure()->text(), "11.99 GB");
}

TEST_F(MenuBarViews, WithNothingToReclaimTheFigureSaysSoInWordsAndReviewIsDisabled) {
    empty();
    const auto& view = open();
    EXPECT_EQ(view.figure()->text(), "Zero KB");
    EXPECT_EQ(figures(view), QStringList({"Zero KB", "Zero KB", "Zero KB"}));
    EXPECT_FALSE(view.reviewButton()->isEnabled());
    EXPECT_TRUE(view.windowButton()->isEnabled());
}

TEST_F(MenuBarViews, OneByteIsEnoughForAReview) {
    empty();
    library.orphans = std::vector{orphan("org.birch", "Birch", 1)};
    const auto& view = open();
    EXPECT_EQ(view.figure()->text(), "1 byte");
    EXPECT_TRUE(view.reviewButton()->isEnabled());
}

TEST_F(MenuBarViews, TheWaysIntoTheProgramAreNamedToTheLetter) {
    const auto& view = open();
    EXPECT_EQ(view.reviewButton()->label(), "Review and Clean…");
    EXPECT_EQ(view.reviewButton()->symbol(), "sparkles");
    EXPECT_EQ(view.windowButton()->label(), "Open Quillane");
    EXPECT_EQ(view.settingsButton()->label(), "Automation Settings…");
    EXPECT_EQ(view.quitButton()->label(), "Quit");
}

TEST_F(MenuBarViews, AScanThatEndsWhileItIsOpenFillsIn) {
    library.phase = AppLibrary::Phase{Kind::findingDeveloperCaches};
    auto& view = open();
    library.phase = AppLibrary::Phase{Kind::ready};
    turn();
    EXPECT_EQ(view.figure()->text(), "24.86 GB");
    EXPECT_EQ(figures(view), QStringList({"9.42 GB", "12.87 GB", "2.57 GB"}));
    EXPECT_TRUE(view.reviewButton()->isEnabled());
    EXPECT_TRUE(view.rescanButton()->isEnabled());
}

TEST_F(MenuBarViews, ItsHeightFollowsItsRowsAndItsWidthStays) {
    auto& view = open();
    const QSize three = popover->size();
    EXPECT_EQ(three.width(), 308);
    library.sweepSelection = std::set{SweepCategory::orphans};
    turn();
    EXPECT_EQ(titles(view), QStringList({"Orphaned Files"}));
    EXPECT_EQ(popover->size(), QSize(308, three.height() - 64));
    library.sweepSelection = std::set<SweepCategory>();
    turn();
    EXPECT_LT(popover->height(), three.height() - 96) << "without rows there is no air for them";
    library.sweepSelection =
        std::set{SweepCategory::caches, SweepCategory::developer, SweepCategory::orphans};
    turn();
    EXPECT_EQ(popover->size(), three);
}

// The keyboard

TEST_F(MenuBarViews, ItOpensWithTheKeyboardOnTheMainButton) {
    open();
    EXPECT_EQ(focused(), "Review and Clean…");
}

TEST_F(MenuBarViews, WithNothingToReviewItOpensWithTheKeyboardOnTheWayToTheWindow) {
    empty();
    open();
    EXPECT_EQ(focused(), "Open Quillane");
}

TEST_F(MenuBarViews, AButtonThatIsDisabledHandsTheKeyboardOnWithoutARingForWhoCameByMouse) {
    auto& view = open();
    QTest::mouseClick(view.rescanButton(), Qt::LeftButton);
    turn();
    EXPECT_EQ(focused(), "Open Quillane");
    EXPECT_FALSE(popover->testAttribute(Qt::WA_KeyboardFocusChange));
}

TEST_F(MenuBarViews, TabReachesEveryButtonFromTheTopAndComesRound) {
    open();
    QStringList order{focused()};
    for (int i = 0; i < 5; ++i) {
        press(Qt::Key_Tab);
        order << focused();
    }
    EXPECT_EQ(order, QStringList({"Review and Clean…", "Open Quillane", "Automation Settings…", "Quit",
                                  "Rescan", "Review and Clean…"}));
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "Rescan");
}

TEST_F(MenuBarViews, ArrowsMoveFromButtonToButton) {
    open();
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), "Open Quillane");
    press(Qt::Key_Right);
    EXPECT_EQ(focused(), "Automation Settings…");
    press(Qt::Key_Up);
    press(Qt::Key_Left);
    EXPECT_EQ(focused(), "Review and Clean…");
}

TEST_F(MenuBarViews, SpaceAndReturnPressTheButtonThatHasTheKeyboard) {
    const auto& view = open();
    std::vector<MenuBarWay> ways;
    QObject::connect(&view, &MenuBarView::wanted, &view, [&ways](MenuBarWay way) { ways.push_back(way); });
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    press(Qt::Key_Down);
    press(Qt::Key_Enter);
    EXPECT_EQ(ways, (std::vector{MenuBarWay::review, MenuBarWay::review, MenuBarWay::window}));
}

TEST_F(MenuBarViews, AHeldReturnPressesNothing) {
    const auto& view = open();
    const QSignalSpy ways(&view, &MenuBarView::wanted);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, QString(), true);
    QCoreApplication::sendEvent(view.reviewButton(), &held);
    EXPECT_EQ(ways.count(), 0);
}

TEST_F(MenuBarViews, EscapeClosesIt) {
    open();
    press(Qt::Key_Escape);
    EXPECT_FALSE(popover->isVisible());
}

TEST_F(MenuBarViews, WhereItIsNoPopupEscapeClosesItToo) {
    openAsWindow();
    press(Qt::Key_Escape);
    EXPECT_FALSE(popover->isVisible());
}

TEST_F(MenuBarViews, WhereItIsNoPopupItClosesWhenAnotherWindowGetsTheKeyboard) {
    openAsWindow();
    EXPECT_EQ(focused(), "Review and Clean…");
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_FALSE(popover->isVisible());
}

// Assistive tools

TEST_F(MenuBarViews, ARowIsReadAsOneThing) {
    const auto& view = open();
    auto* const row = QAccessible::queryAccessibleInterface(view.rows().front());
    EXPECT_EQ(row->text(QAccessible::Name), "App Caches, 9.42 GB");
    EXPECT_EQ(row->childCount(), 0);
    library.phase = AppLibrary::Phase{Kind::scanning};
    turn();
    EXPECT_EQ(row->text(QAccessible::Name), "App Caches, —");
}

TEST_F(MenuBarViews, TheFigureIsAnnouncedWithItsCaption) {
    auto& view = open();
    EXPECT_EQ(view.accessibleName(), "RECLAIMABLE NOW 24.86 GB");
    library.phase = AppLibrary::Phase{Kind::scanning};
    turn();
    EXPECT_EQ(view.accessibleName(), "RECLAIMABLE NOW Scanning…");
}

// Where it stands

TEST_F(MenuBarViews, ItIsAPopupButOnWaylandWhereThatNeedsAWindow) {
    EXPECT_EQ(MenuBarPopover::typeOn("xcb"), Qt::Popup);
    EXPECT_EQ(MenuBarPopover::typeOn("cocoa"), Qt::Popup);
    EXPECT_EQ(MenuBarPopover::typeOn("wayland"), Qt::Tool);
    EXPECT_EQ(MenuBarPopover::typeOn("wayland-egl"), Qt::Tool);
}

TEST_F(MenuBarViews, ItStandsInsideTheScreenUnderTheIconAlsoAfterItsHeightHasChanged) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    popover = std::make_unique<MenuBarPopover>(library, QPoint(screen.center().x(), screen.bottom()));
    popover->show();
    turn();
    const int bottom = popover->geometry().bottom();
    EXPECT_EQ(bottom, screen.bottom() - 8);
    library.sweepSelection = std::set{SweepCategory::orphans};
    turn();
    EXPECT_EQ(popover->geometry().bottom(), bottom);
}

// What it looks like

TEST_F(MenuBarViews, PicturesOfItAreKept) {
    open();
    EXPECT_TRUE(keepPicture(pictureOf(*popover), "menubar-popover"));
    library.phase = AppLibrary::Phase{Kind::scanning};
    turn();
    EXPECT_TRUE(keepPicture(pictureOf(*popover), "menubar-popover-scanning"));
    library.phase = AppLibrary::Phase{Kind::ready};
    Look::setDark(true);
    turn();
    EXPECT_TRUE(keepPicture(pictureOf(*popover), "menubar-popover-dark"));
}

TEST_F(MenuBarViews, TextThatGrowsWhileItIsOpenLooksAsIfItHadAlwaysBeenLarge) {
    Look::setTextScale(2);
    open();
    const QRect large = popover->geometry();
    Look::setTextScale(1);
    open();
    ASSERT_NE(popover->geometry(), large);
    Look::setTextScale(2);
    turn();
    EXPECT_EQ(popover->geometry(), large);
    Look::setTextScale(1);
    open();
    const QRect usual = popover->geometry();
    Look::setTextScale(2);
    turn();
    Look::setTextScale(1);
    turn();
    EXPECT_EQ(popover->geometry(), usual);
}

TEST_F(MenuBarViews, WithLargeTextEveryWordHasItsRoomAndEveryButtonLiesInsideAndNoneOverAnother) {
    Look::setTextScale(2);
    const auto& view = open();
    EXPECT_TRUE(keepPicture(pictureOf(*popover), "menubar-popover-large"));
    EXPECT_EQ(popover->width(), 492);
    for (const auto* const label : view.findChildren<ElidedLabel*>())
        EXPECT_FALSE(label->isElided()) << label->text().toStdString();
    QList<QRect> places;
    for (auto* const button : view.findChildren<PushButton*>()) {
        const QRect place(button->mapTo(popover.get(), QPoint()), button->size());
        EXPECT_TRUE(popover->rect().contains(place)) << button->label().toStdString();
        for (const auto& other : places)
            EXPECT_FALSE(other.intersects(place)) << button->label().toStdString();
        places << place;
    }
}
