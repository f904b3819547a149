#include "MacPreviewPanel.h"
#include "PanelStandIns.h"
#include "StandIns.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>
#include <memory>
#include <utility>
#include <vector>

namespace quillane {
namespace {

using StandIn::Asking;
using StandIn::Ending;
using Key = PreviewPanel::Key;

const FileURL kFile("/Users/alex/A b é.pdf");
const FileURL kOther("/Users/alex/B.pdf");
constexpr std::uint16_t kDown = 0x7D;
constexpr std::uint16_t kSpace = 0x31;
constexpr unsigned long kShift = 1 << 17;
constexpr unsigned long kControl = 1 << 18;
constexpr unsigned long kOption = 1 << 19;
constexpr unsigned long kCommand = 1 << 20;
constexpr unsigned long kOfArrows = (1 << 21) | (1 << 23); // arrows have them always

class MacPreviewPanelTest : public testing::Test {
  protected:
    MacPreviewPanelTest() { begin(Asking::theWindow); }

    void begin(Asking asking, Ending ending = Ending::atOnce) {
        panel.reset();
        StandIn::begin();
        StandIn::beginPanel(asking, ending);
        panel = std::make_unique<MacPreviewPanel>(tasks);
        panel->setHandlers({.closed = [this] { ++closings; },
                            .pressed =
                                [this](Key key, bool withShift) {
                                    presses.emplace_back(key, withShift);
                                    return takesKeys;
                                }});
    }
    void show(const FileURL& file = kFile) { panel->show(file, StandIn::content()); }

    StepTaskRunner tasks;
    int closings = 0;
    std::vector<std::pair<Key, bool>> presses;
    bool takesKeys = true;
    std::unique_ptr<MacPreviewPanel> panel;
};

TEST_F(MacPreviewPanelTest, ThePanelIsMadeWithTheFirstFile) {
    EXPECT_FALSE(panel->isShown());
    panel->hide();
    EXPECT_FALSE(StandIn::panel().isMade);
    show();
    EXPECT_TRUE(panel->isShown());
}

TEST_F(MacPreviewPanelTest, ShowsTheFileWhetherTheWindowIsAskedOrNobody) {
    for (const auto asking : {Asking::theWindow, Asking::nobody}) {
        begin(asking);
        show();
        EXPECT_EQ(StandIn::panel().location, kFile.absoluteString());
        EXPECT_TRUE(StandIn::panel().hasDelegate);
        show(kOther);
        EXPECT_EQ(StandIn::panel().location, kOther.absoluteString());
        EXPECT_EQ(StandIn::panel().loadings, 2);
        EXPECT_EQ(StandIn::panel().openings, 1);
        tasks.settle();
        EXPECT_EQ(closings, 0);
    }
}

TEST_F(MacPreviewPanelTest, HidingClosesItLeavesTheChainAsItWasAndTellsNothing) {
    for (const auto ending : {Ending::atOnce, Ending::later}) {
        begin(Asking::theWindow, ending);
        show();
        EXPECT_EQ(StandIn::responders(), 2);
        panel->hide();
        EXPECT_FALSE(StandIn::panel().isVisible);
        EXPECT_FALSE(StandIn::panel().hasDelegate);
        EXPECT_EQ(StandIn::responders(), 1);
        StandIn::endLate();
        tasks.settle();
        EXPECT_EQ(closings, 0);
    }
}

TEST_F(MacPreviewPanelTest, WhoeverSteppedInBetweenStaysInTheChain) {
    show();
    StandIn::stepInBetween();
    EXPECT_EQ(StandIn::responders(), 3);
    panel->hide();
    EXPECT_EQ(StandIn::responders(), 2);
}

TEST_F(MacPreviewPanelTest, WhatIsShownAgainBeforeTheEndWasToldIsNotEmpty) {
    begin(Asking::theWindow, Ending::later);
    show();
    panel->hide();
    show(kOther);
    EXPECT_EQ(StandIn::panel().location, kOther.absoluteString());
    StandIn::endLate();
    tasks.settle();
    EXPECT_EQ(StandIn::panel().location, kOther.absoluteString()) << "it was the end of the first";
    EXPECT_EQ(closings, 0);
}

TEST_F(MacPreviewPanelTest, ItsClosingIsToldOnceAtALaterTurn) {
    for (const auto& [asking, ending] :
         {std::pair(Asking::theWindow, Ending::atOnce), std::pair(Asking::theWindow, Ending::later),
          std::pair(Asking::nobody, Ending::atOnce)}) {
        begin(asking, ending);
        closings = 0;
        show();
        StandIn::closePanel();
        EXPECT_EQ(closings, 0);
        tasks.settle();
        EXPECT_EQ(closings, 1);
        EXPECT_FALSE(panel->isShown());
        panel->hide();
        StandIn::endLate();
        tasks.settle();
        EXPECT_EQ(closings, 1);
    }
}

TEST_F(MacPreviewPanelTest, ANewFocusThatAsksForControlAnewIsNoEnd) {
    show();
    StandIn::bringOtherForward();
    StandIn::bringBack();
    tasks.settle();
    EXPECT_EQ(closings, 0);
    EXPECT_EQ(StandIn::panel().location, kFile.absoluteString());
}

TEST_F(MacPreviewPanelTest, AnotherWindowThatTakesThePanelOverIsItsEnd) {
    show();
    StandIn::bringOtherForward();
    EXPECT_FALSE(StandIn::panel().hasDelegate);
    tasks.settle();
    EXPECT_EQ(closings, 1);
}

TEST_F(MacPreviewPanelTest, TheClosingOfAnotherWindowIsNotThePanels) {
    begin(Asking::nobody);
    show();
    StandIn::bringOtherForward();
    tasks.settle();
    EXPECT_EQ(closings, 0);
}

TEST_F(MacPreviewPanelTest, KeysOfTheListArePassedWithShiftOrWithout) {
    show();
    EXPECT_TRUE(StandIn::passKey(kDown, kOfArrows));
    EXPECT_TRUE(StandIn::passKey(kDown, kOfArrows | kShift));
    EXPECT_EQ(presses, (std::vector{std::pair(Key::down, false), std::pair(Key::down, true)}));
    EXPECT_FALSE(StandIn::passKey(kSpace));
    EXPECT_FALSE(StandIn::passKey(kDown, 0, StandIn::Event::keyUp));
    EXPECT_EQ(presses.size(), 2U);
}

TEST_F(MacPreviewPanelTest, KeysWithCommandOptionOrControlAreThePanelsOwn) {
    show();
    for (const auto held : {kCommand, kOption, kControl, kControl | kShift}) {
        EXPECT_FALSE(StandIn::passKey(kDown, held | kOfArrows)) << held;
    }
    EXPECT_TRUE(presses.empty());
}

TEST_F(MacPreviewPanelTest, AKeyThatGoesNowhereIsThePanelsOwn) {
    show();
    takesKeys = false;
    EXPECT_FALSE(StandIn::passKey(kDown));
    panel->setHandlers({});
    EXPECT_FALSE(StandIn::passKey(kDown));
}

TEST_F(MacPreviewPanelTest, AHandlerMayTakeItselfAway) {
    const auto mark = std::make_shared<int>(7);
    int seen = 0;
    panel->setHandlers({.closed = {}, .pressed = [this, mark, &seen](Key, bool) {
                            panel->setHandlers({});
                            seen = *mark;
                            return true;
                        }});
    show();
    EXPECT_TRUE(StandIn::passKey(kDown));
    EXPECT_EQ(seen, 7);
}

TEST_F(MacPreviewPanelTest, NothingOfItIsLeftWhenItEnds) {
    show();
    StandIn::closePanel();
    panel.reset();
    EXPECT_FALSE(StandIn::panel().hasDelegate);
    EXPECT_EQ(StandIn::responders(), 1);
    tasks.settle();
    EXPECT_EQ(closings, 0);
}

} // namespace
} // namespace quillane
