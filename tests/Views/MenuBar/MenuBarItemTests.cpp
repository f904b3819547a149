#include "Components/PushButton.h"
#include "Components/SymbolButton.h"
#include "DefaultsKeys.h"
#include "MenuBar/MenuBarItem.h"
#include "MenuBar/MenuBarPopover.h"
#include "MenuBar/MenuBarView.h"
#include "MenuBarTest.h"
#include <QSignalSpy>
#include <algorithm>
#include <chrono>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace quillane;
using namespace std::chrono_literals;

namespace {

// Writes down which windows were asked for.
class RecordingScenes final : public Scenes {
  public:
    explicit RecordingScenes(std::vector<std::string>& log)
        : m_log(log) {}
    void showWindow(const std::string& token) override { m_log.push_back("window " + token); }
    void showSettings(SettingsTab tab) override {
        m_log.push_back(tab == SettingsTab::automation ? "automation settings" : "general settings");
    }
    UpdaterController& updater() override { throw std::logic_error("nobody asks for it here"); }

  private:
    std::vector<std::string>& m_log;
};

class MenuBarItems : public MenuBarTest {
  protected:
    MenuBarItems() { wish(true); }

    MenuBarItem& make() {
        item.emplace(library, notifications, scenes, [this] { log.emplace_back("quit"); });
        turn();
        return *item;
    }
    void wish(bool isShown) { fakes.defaults.set(DefaultsKeys::kShowMenuBarExtra, isShown); }
    void pressIcon(MenuBarExtra::Press press = {}) {
        extra.press(press);
        turn();
    }
    // The buttons of the popover, by its open way in.
    void choose(PushButton* (MenuBarView::*button)() const) {
        QTest::mouseClick((item->popover()->view()->*button)(), Qt::LeftButton);
        turn();
    }
    // The words of the menu from the top, empty for a rule, and in brackets what can't be chosen.
    std::vector<std::string> menu() const {
        std::vector<std::string> lines;
        for (const auto& entry : extra.menu) {
            lines.push_back(entry.isEnabled ? entry.words : "[" + entry.words + "]");
        }
        return lines;
    }
    void chooseFromMenu(const std::string& words, const std::string& token = {}) {
        const auto entry = std::ranges::find(extra.menu, words, &MenuBarExtra::Entry::words);
        ASSERT_NE(entry, extra.menu.end()) << words;
        extra.choose({.id = entry->id, .activationToken = token});
        turn();
    }
    NotificationCenter::Subscription noted(std::string_view name) {
        return notifications.observe(name, [this, name](const auto&) { log.emplace_back(name); });
    }

    std::vector<std::string> log;
    RecordingScenes scenes{log};
    NotificationCenter::Subscription overview = noted(NotificationName::kShowOverview);
    NotificationCenter::Subscription preview = noted(NotificationName::kOpenSweepPreview);
    std::optional<MenuBarItem> item;
};

} // namespace

// The item

TEST_F(MenuBarItems, ItStandsFromTheStartWhenTheSettingWantsIt) {
    make();
    EXPECT_TRUE(extra.isInserted);
}

TEST_F(MenuBarItems, ItDoesNotStandWhenTheSettingIsOff) {
    wish(false);
    make();
    EXPECT_FALSE(extra.isInserted);
    EXPECT_EQ(extra.figure, "");
}

TEST_F(MenuBarItems, TurningTheSettingOffTakesItAwayAtOnceAndTheOpenPopoverWithIt) {
    make();
    pressIcon();
    ASSERT_NE(item->popover(), nullptr);
    wish(false);
    EXPECT_FALSE(extra.isInserted) << "within the change of the setting";
    EXPECT_EQ(item->popover(), nullptr);
}

TEST_F(MenuBarItems, TurningTheSettingOnBringsItAtOnceWithItsFigure) {
    wish(false);
    make();
    wish(true);
    EXPECT_TRUE(extra.isInserted);
    EXPECT_EQ(extra.figure, "24.86 GB");
}

TEST_F(MenuBarItems, AnotherSettingLeavesItAlone) {
    make();
    const QSignalSpy changes(&*item, &MenuBarItem::standingChanged);
    fakes.defaults.set(DefaultsKeys::kThresholdGB, std::int64_t{7});
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(extra.isInserted);
}

TEST_F(MenuBarItems, ItGoesWithTheProgram) {
    make();
    item.reset();
    EXPECT_FALSE(extra.isInserted);
    pressIcon(); // nobody is there to hear of it
}

// The figure

TEST_F(MenuBarItems, TheFigureStandsBesideTheIconWhenAScanHasMeasuredIt) {
    make();
    EXPECT_EQ(extra.figure, "24.86 GB");
}

TEST_F(MenuBarItems, InEveryOtherPhaseTheIconStandsAlone) {
    make();
    for (const auto kind :
         {Kind::idle, Kind::scanning, Kind::measuring, Kind::findingOrphans, Kind::findingDeveloperCaches}) {
        library.phase = AppLibrary::Phase{kind};
        turn();
        EXPECT_EQ(extra.figure, "");
    }
    library.phase = AppLibrary::Phase{Kind::ready};
    turn();
    EXPECT_EQ(extra.figure, "24.86 GB");
}

TEST_F(MenuBarItems, WithNothingToReclaimTheIconStandsAlone) {
    empty();
    make();
    EXPECT_EQ(extra.figure, "");
}

TEST_F(MenuBarItems, TheFigureKnowsMegabytesAndGigabytesOnly) {
    empty();
    make();
    for (const auto& [bytes, words] : {std::pair<Bytes, const char*>{1, "0 MB"},
                                       {999'999, "1 MB"},
                                       {1'500'000, "1.5 MB"},
                                       {577'700'000, "577.7 MB"},
                                       {1'500'000'000'000, "1,500 GB"}}) {
        library.orphans = std::vector{orphan("org.birch", "Birch", bytes)};
        turn();
        EXPECT_EQ(extra.figure, words) << bytes;
    }
}

TEST_F(MenuBarItems, ACategoryThatIsTurnedOffDoesNotCountInTheFigure) {
    make();
    library.sweepSelection = std::set{SweepCategory::caches};
    turn();
    EXPECT_EQ(extra.figure, "9.42 GB");
    library.sweepSelection = std::set<SweepCategory>();
    turn();
    EXPECT_EQ(extra.figure, "");
}

TEST_F(MenuBarItems, TheItemIsToldTheFigureOnlyWhenItHasChanged) {
    make();
    const int once = extra.figuresSet;
    library.sweepSelection.modify([](auto&) {});
    library.apps.modify([](auto&) {});
    turn();
    EXPECT_EQ(extra.figuresSet, once);
    library.sweepSelection = std::set{SweepCategory::caches};
    turn();
    EXPECT_EQ(extra.figuresSet, once + 1);
}

// The popover

TEST_F(MenuBarItems, APressOpensThePopoverAndTheNextOneClosesIt) {
    make();
    EXPECT_EQ(item->popover(), nullptr);
    pressIcon();
    ASSERT_NE(item->popover(), nullptr);
    EXPECT_TRUE(item->popover()->isVisible());
    pressIcon();
    EXPECT_EQ(item->popover(), nullptr);
}

TEST_F(MenuBarItems, ThePressThatClosedItBesideThePopoverDoesNotOpenItAgain) {
    make();
    pressIcon();
    item->popover()->close(); // as a popup does on a press anywhere else
    clock.advance(299ms);
    pressIcon();
    EXPECT_EQ(item->popover(), nullptr);
    clock.advance(1ms);
    pressIcon();
    EXPECT_NE(item->popover(), nullptr);
}

TEST_F(MenuBarItems, ThePopoverStandsWhereTheIconWasPressed) {
    make();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    pressIcon({.place = MenuBarExtra::Place{screen.center().x(), screen.bottom()}, .activationToken = ""});
    ASSERT_NE(item->popover(), nullptr);
    EXPECT_EQ(item->popover()->geometry().bottom(), screen.bottom() - 8);
    EXPECT_LT(item->popover()->x(), screen.center().x());
}

TEST_F(MenuBarItems, ItClosesWhenThePanelGoes) {
    make();
    pressIcon();
    extra.setPanel(false);
    turn();
    EXPECT_EQ(item->popover(), nullptr);
}

TEST_F(MenuBarItems, ItClosesWhenAScreenGoesAndOpensAgainAtTheNextPress) {
    make();
    pressIcon();
    ASSERT_NE(item->popover(), nullptr);
    emit qGuiApp->screenRemoved(QGuiApplication::primaryScreen());
    EXPECT_EQ(item->popover(), nullptr);
    clock.advance(MenuBarItem::kAfterClosing);
    pressIcon();
    EXPECT_NE(item->popover(), nullptr);
}

TEST_F(MenuBarItems, ReviewOpensTheWindowThenTheOverviewThenTheReview) {
    make();
    pressIcon({.place = {}, .activationToken = "token"});
    choose(&MenuBarView::reviewButton);
    EXPECT_EQ(log, (std::vector<std::string>{"window token", "Quillane.showOverview",
                                             "Quillane.openSweepPreview"}));
    EXPECT_EQ(item->popover(), nullptr);
}

TEST_F(MenuBarItems, OpenQuillaneOpensTheWindowThenTheOverview) {
    make();
    pressIcon({.place = {}, .activationToken = "token"});
    choose(&MenuBarView::windowButton);
    EXPECT_EQ(log, (std::vector<std::string>{"window token", "Quillane.showOverview"}));
    EXPECT_EQ(item->popover(), nullptr);
}

TEST_F(MenuBarItems, TheTokenOfOnePressIsNotUsedForTheNext) {
    make();
    pressIcon({.place = {}, .activationToken = "token"});
    item->closePopover();
    clock.advance(1s);
    pressIcon();
    choose(&MenuBarView::windowButton);
    EXPECT_EQ(log.front(), "window ");
}

TEST_F(MenuBarItems, AutomationSettingsOpensTheSettingsWithThatTabInFront) {
    make();
    pressIcon();
    choose(&MenuBarView::settingsButton);
    EXPECT_EQ(log, std::vector<std::string>{"automation settings"});
    EXPECT_EQ(item->popover(), nullptr);
}

TEST_F(MenuBarItems, QuitEndsTheProgram) {
    make();
    pressIcon();
    choose(&MenuBarView::quitButton);
    EXPECT_EQ(log, std::vector<std::string>{"quit"});
    EXPECT_EQ(item->popover(), nullptr);
}

TEST_F(MenuBarItems, RescanLeavesThePopoverOpen) {
    make();
    pressIcon();
    QTest::mouseClick(item->popover()->view()->rescanButton(), Qt::LeftButton);
    turn();
    EXPECT_EQ(library.phase->kind, Kind::scanning);
    EXPECT_NE(item->popover(), nullptr);
    EXPECT_EQ(extra.figure, "");
}

TEST_F(MenuBarItems, NothingInThePopoverRemovesAnything) {
    make();
    for (auto button : {&MenuBarView::reviewButton, &MenuBarView::windowButton, &MenuBarView::settingsButton,
                        &MenuBarView::quitButton}) {
        pressIcon();
        ASSERT_NE(item->popover(), nullptr);
        choose(button);
        finish();
        EXPECT_FALSE(library.isSweeping.get());
        EXPECT_FALSE(library.lastOperation->has_value());
        clock.advance(1s);
    }
    EXPECT_EQ(library.selectedSweepBytes(), 24'860'000'000);
}

// The menu

TEST_F(MenuBarItems, TheMenuOffersTheWaysOfThePopoverByTheSameWords) {
    make();
    EXPECT_EQ(menu(), (std::vector<std::string>{"Open Quillane", "Review and Clean…", "",
                                                "Automation Settings…", "Quit"}));
    pressIcon();
    const auto* const view = item->popover()->view();
    std::set<std::string> buttons;
    for (auto button : {&MenuBarView::reviewButton, &MenuBarView::windowButton, &MenuBarView::settingsButton,
                        &MenuBarView::quitButton}) {
        buttons.insert((view->*button)()->text().toStdString());
    }
    auto words = menu();
    std::erase(words, "");
    EXPECT_EQ(std::set(words.begin(), words.end()), buttons);
}

TEST_F(MenuBarItems, TheReviewCanBeChosenWhenThePopoverOffersItOnly) {
    make();
    pressIcon();
    const auto* const review = item->popover()->view()->reviewButton();
    library.phase = AppLibrary::Phase{Kind::measuring};
    turn();
    EXPECT_EQ(menu()[1], "[Review and Clean…]");
    EXPECT_FALSE(review->isEnabled());
    library.phase = AppLibrary::Phase{Kind::ready};
    turn();
    EXPECT_EQ(menu()[1], "Review and Clean…");
    EXPECT_TRUE(review->isEnabled());
    empty();
    turn();
    EXPECT_EQ(menu()[1], "[Review and Clean…]");
    EXPECT_FALSE(review->isEnabled());
}

TEST_F(MenuBarItems, WhatIsChosenFromTheMenuLeadsWhereThePopoverDoes) {
    make();
    chooseFromMenu("Open Quillane", "token");
    EXPECT_EQ(std::exchange(log, {}), (std::vector<std::string>{"window token", "Quillane.showOverview"}));
    chooseFromMenu("Review and Clean…", "token-2");
    EXPECT_EQ(std::exchange(log, {}), (std::vector<std::string>{"window token-2", "Quillane.showOverview",
                                                                "Quillane.openSweepPreview"}));
    chooseFromMenu("Automation Settings…");
    EXPECT_EQ(std::exchange(log, {}), std::vector<std::string>{"automation settings"});
    chooseFromMenu("Quit");
    EXPECT_EQ(std::exchange(log, {}), std::vector<std::string>{"quit"});
}

TEST_F(MenuBarItems, AChoiceThatComesTooLateIsNone) {
    make();
    extra.choose({.id = static_cast<int>(MenuBarWay::review), .activationToken = {}});
    empty(); // before the choice is told
    turn();
    EXPECT_EQ(log, std::vector<std::string>());
}

TEST_F(MenuBarItems, AChoiceClosesThePopover) {
    make();
    pressIcon();
    chooseFromMenu("Open Quillane");
    EXPECT_EQ(item->popover(), nullptr);
}

TEST_F(MenuBarItems, ThePanelIsToldTheMenuOnlyWhenItHasChanged) {
    make();
    const int once = extra.menusSet;
    library.sweepSelection = std::set{SweepCategory::caches};
    turn();
    EXPECT_EQ(extra.menusSet, once);
    library.sweepSelection = std::set<SweepCategory>();
    turn();
    EXPECT_EQ(extra.menusSet, once + 1);
}

TEST_F(MenuBarItems, AtRestNothingWaitsAndNothingIsWorkedOut) {
    make();
    EXPECT_EQ(clock.sleepers(), 0U);
    EXPECT_EQ(runner.waitingJobs(), 0U);
}
