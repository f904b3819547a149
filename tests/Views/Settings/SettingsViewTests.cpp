#include "Components/FocusRing.h"
#include "Components/Look.h"
#include "Settings/SettingsView.h"
#include "SettingsTest.h"
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>

using namespace quillane;
using namespace DefaultsKeys;

namespace {

class SettingsWindow : public SettingsTest {
  protected:
    void TearDown() override {
        Look::setTextScale(1);
        Look::setDark(false);
    }
    // What Tab comes to from the tabs on, until it is there again.
    QStringList tabOrder() {
        QStringList names;
        settings->tabs()->setFocus(Qt::TabFocusReason);
        do {
            names << QApplication::focusWidget()->accessibleName();
            press(Qt::Key_Tab);
        } while (!settings->tabs()->hasFocus() && names.size() < 40);
        return names;
    }
    QScrollBar& scrollBar() const {
        auto* const page = settings->page(settings->tab());
        return *qobject_cast<QScrollArea*>(page->parentWidget()->parentWidget())->verticalScrollBar();
    }
    // Of what stands on the page in front, the lowest pixel.
    int lowest() const {
        int lowest = 0;
        for (const auto* const part : settings->page(settings->tab())->findChildren<QWidget*>()) {
            if (part->isVisible()) {
                lowest = std::max(lowest, part->mapTo(settings.get(), QPoint(0, part->height())).y());
            }
        }
        return lowest;
    }
    int screenBottom() const { return settings->screen()->availableGeometry().height(); }
};

} // namespace

// The window

TEST_F(SettingsWindow, IsAWindowOfItsOwnThatBlocksNoOther) {
    open(Tab::general);
    EXPECT_TRUE(settings->isWindow());
    EXPECT_EQ(settings->windowType(), Qt::Window);
    EXPECT_FALSE(settings->isModal());
    EXPECT_EQ(settings->windowTitle(), "Settings");
}

TEST_F(SettingsWindow, OpensWithTheTabThatWasAskedFor) {
    for (const auto tab : {Tab::general, Tab::automation}) {
        open(tab);
        EXPECT_EQ(settings->tab(), tab);
        EXPECT_TRUE(settings->page(tab)->isVisible());
        EXPECT_TRUE(settings->tabs()->tab(static_cast<int>(tab))->hasFocus());
        EXPECT_FALSE(settings->page(tab == Tab::general ? Tab::automation : Tab::general)->isVisible());
    }
}

TEST_F(SettingsWindow, HasTwoTabsWithTheirSymbols) {
    open(Tab::general);
    ASSERT_EQ(settings->tabs()->count(), 2);
    EXPECT_EQ(settings->tabs()->tab(0)->accessibleName(), "General");
    EXPECT_EQ(settings->tabs()->symbol(0), "gearshape");
    EXPECT_EQ(settings->tabs()->tab(1)->accessibleName(), "Automation");
    EXPECT_EQ(settings->tabs()->symbol(1), "clock.arrow.2.circlepath");
}

TEST_F(SettingsWindow, IsAsHighAsItsTabNeeds) {
    open(Tab::general);
    EXPECT_EQ(settings->width(), SettingsView::kWidth);
    EXPECT_EQ(scrollBar().maximum(), 0);
    EXPECT_EQ(settings->height() - lowest(), 24);
    const int general = settings->height();
    settings->showTab(Tab::automation);
    turn();
    EXPECT_GT(settings->height(), general);
    EXPECT_EQ(scrollBar().maximum(), 0);
    EXPECT_EQ(settings->height() - lowest(), 24);
    settings->showTab(Tab::general);
    turn();
    EXPECT_EQ(settings->height(), general);
}

TEST_F(SettingsWindow, GrowsByTheLineThatASentenceNeeds) {
    open(Tab::general);
    const int before = settings->height();
    sample.updater.version = "1.0 of a branch that somebody has named at a length that goes beyond the end";
    sample.updater.lastCheck = sample.clock.now();
    sample.updater.tellOfChange();
    turn();
    EXPECT_GT(settings->height(), before);
    EXPECT_EQ(scrollBar().maximum(), 0);
}

TEST_F(SettingsWindow, WithLargeTextItScrollsWhereTheScreenEndsAndTabBringsWhatItComesTo) {
    open(Tab::automation);
    Look::setTextScale(2);
    turn();
    EXPECT_LE(settings->height(), screenBottom());
    EXPECT_EQ(settings->width(), SettingsView::kWidth);
    EXPECT_GT(scrollBar().maximum(), 0);
    auto& last = switchOf("Weekly summary");
    EXPECT_TRUE(last.visibleRegion().isEmpty());
    tabOrder();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(last.hasFocus());
    EXPECT_EQ(last.visibleRegion().boundingRect(), last.rect());
}

// What another screen would have room for is not to be had here, so the window is told that something has changed.
TEST_F(SettingsWindow, FitsAnewWhereItsScreenHasChangedOrIsAnother) {
    open(Tab::automation);
    const int fitting = settings->height();
    settings->setFixedHeight(fitting - 100);
    emit settings->screen()->availableGeometryChanged(settings->screen()->availableGeometry());
    EXPECT_EQ(settings->height(), fitting);
    settings->setFixedHeight(fitting - 100);
    emit settings->windowHandle()->screenChanged(settings->screen());
    EXPECT_EQ(settings->height(), fitting);
    settings->hide();
    settings->show(); // and is not followed twice
    settings->setFixedHeight(fitting - 100);
    emit settings->screen()->availableGeometryChanged(settings->screen()->availableGeometry());
    EXPECT_EQ(settings->height(), fitting);
}

TEST_F(SettingsWindow, NothingIsCutAtAnySizeOfText) {
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        Look::setTextScale(scale);
        for (const auto tab : {Tab::general, Tab::automation}) {
            open(tab);
            for (const auto* const label : settings->page(tab)->findChildren<QLabel*>()) {
                if (!label->isHidden()) {
                    EXPECT_GE(label->height(), label->heightForWidth(label->width()))
                        << scale << ' ' << qPrintable(label->text());
                    EXPECT_GE(label->width(), label->minimumSizeHint().width())
                        << scale << ' ' << qPrintable(label->text());
                }
            }
            for (const auto* const button : settings->page(tab)->findChildren<QPushButton*>()) {
                EXPECT_GE(button->width(), button->sizeHint().width()) << scale;
            }
        }
        EXPECT_GE(threshold().width(), threshold().sizeHint().width());
    }
}

// Where it opens

TEST_F(SettingsWindow, OpensInTheMiddleOfTheMainWindow) {
    make(Tab::general);
    QWidget main;
    main.setGeometry(50, 60, 740, 700);
    main.show();
    settings->placeOver(&main);
    EXPECT_LE((settings->geometry().center() - main.frameGeometry().center()).manhattanLength(), 2);
}

TEST_F(SettingsWindow, OverAWindowAtTheEdgeItStaysOnTheScreen) {
    make(Tab::automation);
    QWidget main;
    main.show();
    for (const QPoint corner : {QPoint(600, 500), QPoint(-200, -100)}) {
        main.setGeometry(QRect(corner, QSize(400, 300)));
        settings->placeOver(&main);
        EXPECT_TRUE(settings->screen()->availableGeometry().contains(settings->geometry()));
    }
    EXPECT_GE(settings->y(), 20) << "with the bar of its title";
}

TEST_F(SettingsWindow, WithoutAWindowThatCanBeSeenItOpensInTheMiddleOfTheScreen) {
    make(Tab::general);
    const QPoint middle = settings->screen()->availableGeometry().center();
    QWidget hidden;
    hidden.setGeometry(0, 0, 100, 100);
    const QWidget* const nobody = nullptr;
    for (const QWidget* const main : {nobody, static_cast<const QWidget*>(&hidden)}) {
        settings->move(0, 0);
        settings->placeOver(main);
        EXPECT_EQ(settings->geometry().center().x(), middle.x());
        EXPECT_NEAR(settings->geometry().center().y(), middle.y(), 40) << "below the bar of its title";
    }
}

// The keyboard

TEST_F(SettingsWindow, TabGoesFromTheTabsThroughTheControlsFromTheTop) {
    open(Tab::general);
    EXPECT_EQ(tabOrder(), QStringList({"General", "Show in menu bar", "Check for updates automatically",
                                       "Check Now", "Open System Settings…", "Show Welcome Again"}));
    for (const auto key : {kScheduledScans, kNudgeOnThreshold, kNudgeOnLowDisk}) {
        defaults().set(key, true);
    }
    settings->showTab(Tab::automation);
    EXPECT_EQ(tabOrder(), QStringList({"Automation", "Notice when I remove an app", "Rescan on a schedule",
                                       "Frequency", "Reclaimable space passes a threshold",
                                       "Reclaimable space passes a threshold", "Free disk space gets low",
                                       "Free disk space gets low", "An app I removed left files behind",
                                       "Something new starts automatically", "Weekly summary"}));
}

TEST_F(SettingsWindow, FromASwitchTabGoesToTheFigureThatItHasMadeLive) {
    open(Tab::automation);
    switchOf("Free disk space gets low").setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    press(Qt::Key_Tab);
    EXPECT_TRUE(stepper("Free disk space gets low").hasFocus());
}

TEST_F(SettingsWindow, TabPassesByWhatIsGrey) {
    open(Tab::automation);
    const QStringList order = tabOrder();
    EXPECT_FALSE(order.contains("Frequency"));
    EXPECT_EQ(order.count("Free disk space gets low"), 1);
}

TEST_F(SettingsWindow, ArrowsOnTheTabsMoveAmongThem) {
    open(Tab::general);
    EXPECT_TRUE(settings->tabs()->hasFocus()) << "the window opens with the keyboard there";
    press(Qt::Key_Right);
    EXPECT_EQ(settings->tab(), Tab::automation);
    press(Qt::Key_Right);
    EXPECT_EQ(settings->tab(), Tab::automation);
    press(Qt::Key_Left);
    EXPECT_EQ(settings->tab(), Tab::general);
    EXPECT_TRUE(settings->tabs()->hasFocus());
}

TEST_F(SettingsWindow, OnlyTheTabInFrontIsAStopOfTab) {
    open(Tab::general);
    for (const auto front : {Tab::automation, Tab::general, Tab::automation}) {
        settings->showTab(front);
        for (int i = 0; i < settings->tabs()->count(); ++i) {
            const bool isStop = (settings->tabs()->tab(i)->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
            EXPECT_EQ(isStop, i == static_cast<int>(front));
        }
    }
}

TEST_F(SettingsWindow, CtrlTabGoesRoundTheTabsWhereverTheKeyboardIs) {
    open(Tab::general);
    switchOf("Show in menu bar").setFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(settings->tab(), Tab::automation);
    EXPECT_TRUE(settings->tabs()->hasFocus()) << "what had it is out of sight";
    EXPECT_TRUE(FocusRing::isShownFor(QApplication::focusWidget()));
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(settings->tab(), Tab::general);
    press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(settings->tab(), Tab::automation);
}

TEST_F(SettingsWindow, EscapeAndCtrlWCloseItFromAnyControl) {
    for (const auto tab : {Tab::general, Tab::automation}) {
        for (const auto modifiers : {Qt::NoModifier, Qt::ControlModifier}) {
            defaults().set(kNudgeOnThreshold, true);
            open(tab);
            for (auto* const control : settings->page(tab)->findChildren<QWidget*>()) {
                if ((control->focusPolicy() & Qt::TabFocus) && control->isEnabled()) {
                    settings->show();
                    settings->activateWindow();
                    ASSERT_TRUE(QTest::qWaitForWindowActive(settings.get()));
                    control->setFocus();
                    press(modifiers == Qt::NoModifier ? Qt::Key_Escape : Qt::Key_W, modifiers);
                    EXPECT_FALSE(settings->isVisible()) << qPrintable(control->accessibleName());
                }
            }
        }
    }
}

TEST_F(SettingsWindow, EscapeInTheListOfChoicesClosesOnlyTheList) {
    defaults().set(kScheduledScans, true);
    open(Tab::automation);
    frequency().setFocus();
    frequency().showPopup();
    ASSERT_TRUE(frequency().view()->isVisible());
    QTest::keyClick(frequency().view(), Qt::Key_Escape);
    EXPECT_FALSE(frequency().view()->isVisible());
    EXPECT_TRUE(settings->isVisible());
}

TEST_F(SettingsWindow, CtrlQQuits) {
    open(Tab::general);
    bool quits = false;
    // A later turn quits, which must not end this program's tests.
    const auto asked = [&](QShortcut* key) {
        return key->key() == QKeySequence(Qt::CTRL | Qt::Key_Q) && key->isEnabled();
    };
    for (auto* const key : settings->findChildren<QShortcut*>()) {
        if (asked(key)) {
            key->disconnect(qApp);
            QObject::connect(key, &QShortcut::activated, key, [&] { quits = true; });
        }
    }
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(quits);
}

TEST_F(SettingsWindow, TheRingShowsAtWhichTabTheKeyboardIs) {
    open(Tab::general);
    press(Qt::Key_Right);
    EXPECT_TRUE(FocusRing::isShownFor(settings->tabs()->tab(1)));
    QTest::mouseClick(settings->tabs()->tab(0), Qt::LeftButton);
    EXPECT_TRUE(settings->tabs()->tab(0)->hasFocus());
    EXPECT_FALSE(FocusRing::isShownFor(settings->tabs()->tab(0))) << "after a click it does not";
}

// By mouse

TEST_F(SettingsWindow, AClickOnATabShowsIt) {
    open(Tab::general);
    QTest::mouseClick(settings->tabs()->tab(1), Qt::LeftButton);
    EXPECT_EQ(settings->tab(), Tab::automation);
}

TEST_F(SettingsWindow, TabsStandStillWhicheverIsInFront) {
    QList<QRect> places;
    for (const auto front : {Tab::general, Tab::automation}) {
        Look::setTextScale(1);
        open(front);
        Look::setTextScale(2); // lays them out anew, as wide as their words
        turn();
        places << settings->tabs()->tab(1)->geometry();
    }
    EXPECT_EQ(places[0], places[1]);
}

// Assistive tools

TEST_F(SettingsWindow, TheTabsAreMetAsAListOfTabs) {
    open(Tab::general);
    auto* const list = QAccessible::queryAccessibleInterface(settings->tabs());
    EXPECT_EQ(list->role(), QAccessible::PageTabList);
    EXPECT_EQ(list->text(QAccessible::Name), "Settings");
    ASSERT_EQ(list->childCount(), 2);
    for (const int front : {0, 1, 0}) {
        list->child(front)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(static_cast<int>(settings->tab()), front);
        for (int i = 0; i < 2; ++i) {
            auto* const tab = list->child(i);
            EXPECT_EQ(tab->role(), QAccessible::PageTab);
            EXPECT_EQ(tab->text(QAccessible::Name), i == 0 ? "General" : "Automation");
            EXPECT_TRUE(tab->state().selectable);
            EXPECT_EQ(tab->state().selected, i == front);
            EXPECT_EQ(tab->state().focused, i == front) << "the keyboard was there and goes along";
        }
    }
}

TEST_F(SettingsWindow, GroupsAreMetAsGroupsWithTheirHeadingsAndFootnotes) {
    open(Tab::automation);
    auto* const card = switchOf("Weekly summary").parentWidget()->parentWidget();
    auto* const group = QAccessible::queryAccessibleInterface(card);
    EXPECT_EQ(group->role(), QAccessible::Grouping);
    EXPECT_EQ(group->text(QAccessible::Name), "Reminder");
    EXPECT_EQ(group->text(QAccessible::Description),
              "Once a week, the current reclaimable figure - only if it's over 500 MB.");
}

TEST_F(SettingsWindow, NoControlIsWithoutAName) {
    for (const auto tab : {Tab::general, Tab::automation}) {
        open(tab);
        for (auto* const control : settings->findChildren<QWidget*>()) {
            const bool isPart = qobject_cast<QAbstractSpinBox*>(control->parentWidget()) != nullptr ||
                                control->inherits("QScrollBar") || control->focusProxy() != nullptr ||
                                control->window() != settings.get() ||
                                control->objectName() == "qt_scrollarea_viewport";
            if (control->focusPolicy() != Qt::NoFocus && !isPart && control->isVisible()) {
                EXPECT_FALSE(
                    QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name).isEmpty())
                    << control->metaObject()->className();
            }
        }
    }
}
