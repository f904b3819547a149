#include "Components/DetailHeader.h"
#include "Components/EmptyState.h"
#include "Components/FittedLabel.h"
#include "Components/Label.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/PushButton.h"
#include "Components/Tile.h"
#include "Components/ToolbarRow.h"
#include "Duplicates/DuplicateDetailView.h"
#include "Duplicates/DuplicatesDetail.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "SectionDetailTest.h"
#include "SectionRecords.h"
#include "ToolTip.h"
#include <QScrollArea>
#include <QScrollBar>

using namespace quillane;

namespace {

class DuplicatesPane : public SectionDetailTest<DuplicatesDetail> {
  protected:
    DuplicateGroup tour() const {
        return copies("a1", 1'420'000'000,
                      {copyAt("Movies/Exports/Tour.mov", daysBack(21)),
                       copyAt("Documents/Clients/Tour.mov", daysBack(62)), copyAt("Downloads/Tour.mov")});
    }
    DuplicateGroup kit() const {
        return copies("b2", 912'600'000, {copyAt("Downloads/kit.zip"), copyAt("Desktop/kit.zip")});
    }
    std::vector<DuplicateGroup> all() const { return {tour(), kit()}; }
    // Opens the column over all of them, with this one selected.
    DuplicateDetailView& show(const std::string& id) {
        library.duplicates = all();
        state.duplicateSelection = std::unordered_set<std::string>{id};
        openColumn();
        return *column->one();
    }
    void select(std::unordered_set<std::string> ids) {
        state.duplicateSelection = std::move(ids);
        turn();
    }
    void publish(std::vector<DuplicateGroup> groups) {
        library.duplicates = std::move(groups);
        turn();
    }
    void protect(const FileURL& url) {
        library.setProtected(url, true);
        turn();
    }
    QModelIndex row(int number) const { return column->one()->copies()->model()->index(number, 0); }
    QString spoken(int number) const { return row(number).data(Qt::AccessibleTextRole).toString(); }
    QStringList secondLines() const {
        QStringList lines;
        for (int i = 0; i < column->one()->copies()->model()->rowCount(); ++i) {
            lines << row(i).data(CopiesList::SecondLineRole).toString();
        }
        return lines;
    }
    int chosenRow() const {
        int chosen = -1;
        for (int i = 0; i < column->one()->copies()->model()->rowCount(); ++i) {
            if (row(i).data(Qt::CheckStateRole).toInt() == Qt::Checked) {
                EXPECT_EQ(chosen, -1) << "one at most";
                chosen = i;
            }
        }
        return chosen;
    }
    void click(int number, CopiesList::Part part) {
        auto& list = *column->one()->copies();
        const QRect place = list.placeOf(row(number), part);
        const bool isLook = part == CopiesList::Part::Look;
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          isLook ? place.center() : place.topLeft() + QPoint(40, 10));
        turn();
    }
    void choose(int number) { click(number, CopiesList::Part::Choice); }
    void lookAt(int number) { click(number, CopiesList::Part::Look); }

    const FileURL exports{"/Users/alex/Movies/Exports/Tour.mov"};
    const FileURL clients{"/Users/alex/Documents/Clients/Tour.mov"};
    const FileURL downloads{"/Users/alex/Downloads/Tour.mov"};
};

} // namespace

// None

TEST_F(DuplicatesPane, NothingSelectedShowsThePlaceholder) {
    library.duplicates = all();
    openColumn();
    EXPECT_TRUE(showsNone());
    EXPECT_EQ(column->placeholder()->emptyState()->title(), "No Selection");
    EXPECT_EQ(column->placeholder()->emptyState()->sentence(), "Pick a group to choose which copy to keep.");
    EXPECT_EQ(column->placeholder()->emptyState()->symbol(), "doc.on.doc.fill");
}

TEST_F(DuplicatesPane, WhatIsNoLongerThereCountsAsNotSelected) {
    show("a1");
    select({"a1", "b2", "gone"});
    EXPECT_TRUE(showsSeveral());
    publish({kit()});
    EXPECT_TRUE(showsOne());
    EXPECT_EQ(column->one()->header()->title(), "kit.zip");
    publish({});
    EXPECT_TRUE(showsNone());
}

// One

TEST_F(DuplicatesPane, TheHeaderCountsTheCopiesAndTellsTheSizeOfEach) {
    const auto& pane = show("a1");
    EXPECT_EQ(pane.header()->title(), "Tour.mov");
    EXPECT_EQ(pane.header()->subtitle(), "3 identical copies • 1.42 GB each");
    EXPECT_EQ(pane.header()->findChild<Tile*>()->symbol(), "doc.on.doc.fill");
}

TEST_F(DuplicatesPane, EachCopyIsARowInTheOrderOfTheGroup) {
    const auto& pane = show("a1");
    EXPECT_EQ(pane.copiesPanel()->heading()->text(), "Choose the copy to keep");
    EXPECT_EQ(pane.copies()->accessibleName(), "Choose the copy to keep");
    ASSERT_EQ(pane.copies()->model()->rowCount(), 3);
    EXPECT_EQ(row(0).data().toString(), "~/Movies/Exports");
    EXPECT_EQ(row(1).data().toString(), "~/Documents/Clients");
    EXPECT_EQ(row(2).data().toString(), "~/Downloads");
    EXPECT_EQ(secondLines(), QStringList({"Opened 3 weeks ago", "Opened 2 months ago", "Opened Never"}));
    EXPECT_EQ(readIn(row(1).data(Qt::ToolTipRole).toString()), "/Users/alex/Documents/Clients/Tour.mov");
}

TEST_F(DuplicatesPane, TheSuggestedCopyIsChosenAndBearsTheWordWhicheverIsChosen) {
    show("a1");
    const auto newest = [&] {
        return std::vector<bool>{row(0).data(CopiesList::NewestRole).toBool(),
                                 row(1).data(CopiesList::NewestRole).toBool(),
                                 row(2).data(CopiesList::NewestRole).toBool()};
    };
    EXPECT_EQ(chosenRow(), 0);
    EXPECT_EQ(newest(), (std::vector<bool>{true, false, false}));
    choose(2);
    EXPECT_EQ(chosenRow(), 2);
    EXPECT_EQ(newest(), (std::vector<bool>{true, false, false}));
    EXPECT_EQ(spoken(0), "~/Movies/Exports, newest, Opened 3 weeks ago");
    EXPECT_EQ(spoken(2), "~/Downloads, Opened Never");
}

TEST_F(DuplicatesPane, WithoutDatesTheSuggestedCopyNeedNotBeTheFirst) {
    show("b2");
    EXPECT_EQ(chosenRow(), 1) << "its path is the shortest";
}

TEST_F(DuplicatesPane, CopiesInOneFolderAreToldApartByTheirNames) {
    show("a1");
    publish(
        {copies("a1", 2'000'000,
                {copyAt("Downloads/Tour.mov"), copyAt("Downloads/Tour copy.mov"), copyAt("Desktop/T.mov")})});
    EXPECT_EQ(secondLines(),
              QStringList({"Opened Never • Tour.mov", "Opened Never • Tour copy.mov", "Opened Never"}));
    EXPECT_EQ(spoken(1), "~/Downloads, Opened Never, Tour copy.mov");
}

TEST_F(DuplicatesPane, TheFactsTellWhatIsRecoverableAndHowManyCopies) {
    const auto& pane = show("a1");
    EXPECT_EQ(figures(*pane.stats()), (Pairs{{"Recoverable", "2.84 GB"}, {"Copies", "3"}}));
    EXPECT_EQ(pane.stats()->cells()[0]->findChild<FittedLabel*>()->tint(), Tint::Link);
}

TEST_F(DuplicatesPane, NamesAndFoldersThatDeceiveAreShownAsTheyAre) {
    const auto& pane = show("a1");
    publish({copies("a1", 2'000'000, {copyAt("\u202Eone/\u202Etwo.mov"), copyAt("Desktop/b.mov")})});
    EXPECT_EQ(pane.header()->title(), "‹U+202E›two.mov");
    EXPECT_EQ(row(0).data().toString(), "~/‹U+202E›one");
}

TEST_F(DuplicatesPane, DaysThatPassedInTheBackgroundAreToldWhenTheWindowComesToTheFront) {
    show("a1");
    clock.advance(std::chrono::hours(24 * 40));
    QEvent toTheFront(QEvent::WindowActivate);
    QCoreApplication::sendEvent(column, &toTheFront);
    turn();
    EXPECT_EQ(secondLines()[0], "Opened 2 months ago");
}

// The choice

TEST_F(DuplicatesPane, AnotherGroupBeginsWithItsOwnSuggestionAndTheFirstWithItAgain) {
    show("a1");
    choose(2);
    select({"b2"});
    EXPECT_EQ(chosenRow(), 1);
    select({"a1"});
    EXPECT_EQ(chosenRow(), 0);
}

TEST_F(DuplicatesPane, TheChoiceIsForgottenWhenNoneOrSeveralWereShownInBetween) {
    show("a1");
    for (const auto& between : {std::unordered_set<std::string>{}, {"a1", "b2"}}) {
        choose(2);
        ASSERT_EQ(chosenRow(), 2);
        select(between);
        select({"a1"});
        EXPECT_EQ(chosenRow(), 0);
    }
}

TEST_F(DuplicatesPane, ALoadThatFindsTheGroupAgainLeavesTheChoice) {
    show("a1");
    choose(1);
    auto found = tour();
    std::ranges::reverse(found.files);
    publish({kit(), found});
    EXPECT_EQ(column->one()->chosen(), clients);
    EXPECT_EQ(chosenRow(), 1);
}

TEST_F(DuplicatesPane, AChosenCopyThatVanishedFallsBackToTheSuggestedOne) {
    const auto& pane = show("a1");
    choose(1);
    auto fewer = tour();
    fewer.files.erase(fewer.files.begin() + 1);
    publish({fewer});
    EXPECT_EQ(pane.chosen(), exports);
    EXPECT_EQ(chosenRow(), 0);
    EXPECT_EQ(pane.header()->subtitle(), "2 identical copies • 1.42 GB each");
    EXPECT_EQ(pane.removeButton()->label(), "Keep Selected, Trash 1 Others…");
    press(pane.removeButton());
    EXPECT_EQ(asked(), std::vector<FileURL>{downloads});
}

// The buttons

TEST_F(DuplicatesPane, RevealSelectsAllCopiesOfTheGroup) {
    const auto& pane = show("a1");
    EXPECT_EQ(pane.revealButton()->label(), "Reveal in Finder");
    EXPECT_EQ(pane.revealButton()->symbol(), "folder");
    EXPECT_TRUE(pane.toolbar()->isAncestorOf(pane.revealButton()));
    press(pane.revealButton());
    EXPECT_EQ(workspace.revealed(), (std::vector<std::vector<FileURL>>{{exports, clients, downloads}}));
}

TEST_F(DuplicatesPane, TheButtonThatRemovesStandsWideBelowTheFacts) {
    const auto& pane = show("a1");
    const auto& button = *pane.removeButton();
    EXPECT_EQ(button.label(), "Keep Selected, Trash 2 Others…");
    EXPECT_EQ(button.symbol(), "trash");
    EXPECT_EQ(button.role(), PushButton::Role::Destructive);
    EXPECT_FALSE(pane.toolbar()->isAncestorOf(&button));
    EXPECT_EQ(button.width(), ContentView::kDetailNarrowest - 2 * 16);
    EXPECT_GT(button.mapTo(column, QPoint()).y(), pane.stats()->mapTo(column, QPoint()).y());
}

TEST_F(DuplicatesPane, ItAsksToReviewTheOthersOfWhatIsChosen) {
    const auto& pane = show("a1");
    press(pane.removeButton());
    EXPECT_EQ(asked(), (std::vector<FileURL>{clients, downloads}));
    EXPECT_EQ(askedLabel(), "Remove copies of Tour.mov");
    state.removal = std::nullopt;
    choose(1);
    EXPECT_FALSE(state.removal->has_value()) << "a choice removes nothing";
    press(pane.removeButton());
    EXPECT_EQ(asked(), (std::vector<FileURL>{exports, downloads}));
}

TEST_F(DuplicatesPane, AProtectedCopyStaysOutOfTheRequestAndBearsItsMark) {
    const auto& pane = show("a1");
    protect(clients);
    EXPECT_TRUE(row(1).data(CopiesList::ProtectedRole).toBool());
    EXPECT_EQ(spoken(1),
              "~/Documents/Clients, Opened 2 months ago, Protected - Quillane will never remove this");
    press(pane.removeButton());
    EXPECT_EQ(asked(), (std::vector<FileURL>{downloads}));
    state.removal = std::nullopt;
    choose(2);
    press(pane.removeButton());
    EXPECT_EQ(asked(), (std::vector<FileURL>{exports})) << "also when it is not the one that stays";
}

TEST_F(DuplicatesPane, WhereAllOthersAreProtectedNothingCanGo) {
    const auto& pane = show("a1");
    protect(clients);
    EXPECT_TRUE(pane.removeButton()->isEnabled());
    protect(downloads);
    EXPECT_FALSE(pane.removeButton()->isEnabled());
    choose(1);
    EXPECT_TRUE(pane.removeButton()->isEnabled()) << "now the newest can";
}

TEST_F(DuplicatesPane, AClickThatIsFasterThanThePaneAsksForNothingThatIsGone) {
    const auto& pane = show("a1");
    library.duplicates = std::vector<DuplicateGroup>{kit()};
    press(pane.removeButton());
    EXPECT_FALSE(state.removal->has_value());
    press(pane.revealButton());
    EXPECT_TRUE(workspace.revealed().empty());
}

TEST_F(DuplicatesPane, WhatTheScreenStillShowsAsChosenStaysThoughANewerCopyHasCome) {
    const auto& pane = show("a1");
    auto newer = tour();
    newer.files[2].lastUsed = daysBack(1);
    library.duplicates = std::vector<DuplicateGroup>{newer};
    press(pane.removeButton());
    EXPECT_EQ(asked(), (std::vector<FileURL>{clients, downloads}));
}

// Quick Look

TEST_F(DuplicatesPane, TheButtonOfARowLooksAtThatCopyAndPressedAgainNoLonger) {
    show("a1");
    lookAt(1);
    EXPECT_EQ(state.quickLookURL.get(), clients);
    EXPECT_EQ(chosenRow(), 0) << "a look chooses nothing";
    lookAt(2);
    EXPECT_EQ(state.quickLookURL.get(), downloads);
    lookAt(2);
    EXPECT_EQ(state.quickLookURL.get(), std::nullopt);
}

TEST_F(DuplicatesPane, ALookGoesThroughTheCopiesWithTheKeyboard) {
    auto& pane = show("a1");
    lookAt(0);
    ASSERT_EQ(state.quickLookURL.get(), exports);
    pane.copies()->setCurrentIndex(row(0));
    QTest::keyClick(pane.copies(), Qt::Key_Down);
    EXPECT_EQ(state.quickLookURL.get(), clients);
    QTest::keyClick(pane.copies(), Qt::Key_End);
    EXPECT_EQ(state.quickLookURL.get(), downloads);
    EXPECT_EQ(chosenRow(), 0) << "a look chooses nothing";
}

TEST_F(DuplicatesPane, NothingIsLookedAtByGoingThroughTheCopiesAlone) {
    const FileURL other("/Users/alex/Desktop/other.txt");
    auto& pane = show("a1");
    pane.copies()->setCurrentIndex(row(0));
    QTest::keyClick(pane.copies(), Qt::Key_Down);
    EXPECT_EQ(state.quickLookURL.get(), std::nullopt);
    state.quickLookURL = std::optional(other);
    QTest::keyClick(pane.copies(), Qt::Key_Down);
    EXPECT_EQ(state.quickLookURL.get(), other) << "which is no copy of this group";
}

TEST_F(DuplicatesPane, ALookFollowsToTheCopyThatStaysOfAnotherGroup) {
    show("a1");
    lookAt(1);
    select({"b2"});
    EXPECT_EQ(state.quickLookURL.get(), FileURL("/Users/alex/Desktop/kit.zip"));
    select({"a1", "b2"});
    EXPECT_EQ(state.quickLookURL.get(), std::nullopt);
}

TEST_F(DuplicatesPane, ALookAtACopyThatVanishedGoesToTheOneThatStays) {
    show("a1");
    lookAt(2);
    auto fewer = tour();
    fewer.files.pop_back();
    publish({fewer});
    EXPECT_EQ(state.quickLookURL.get(), exports);
}

TEST_F(DuplicatesPane, ALookAtWhatIsNotOfThisPaneIsLeftAlone) {
    const FileURL other("/Users/alex/Desktop/other.txt");
    show("a1");
    state.quickLookURL = std::optional(other);
    select({"b2"});
    select({});
    EXPECT_EQ(state.quickLookURL.get(), other);
}

// Several

TEST_F(DuplicatesPane, SeveralAreCountedAddedUpAndListedWithWhatTheyWaste) {
    show("a1");
    select({"a1", "b2"});
    EXPECT_TRUE(showsSeveral());
    const auto& several = *column->several();
    EXPECT_EQ(several.heading()->text(), "2 groups selected");
    EXPECT_EQ(several.toolbar()->title(), "2 Groups");
    EXPECT_EQ(figures(*several.stats()), (Pairs{{"Combined Size", "3.75 GB"}, {"Rows", "2"}}));
    EXPECT_EQ(listed(), QStringList({"Tour.mov, 2.84 GB", "kit.zip, 912.6 MB"}));
    EXPECT_FALSE(several.note()->isHidden());
    EXPECT_EQ(several.note()->text(), "Keeps the most recently opened copy of each and trashes the rest.");
}

TEST_F(DuplicatesPane, MoveAllToTrashKeepsTheSuggestedCopyOfEachAndWhatIsProtected) {
    show("a1");
    choose(2); // which is of the pane for one
    select({"a1", "b2"});
    protect(clients);
    auto* const button = column->several()->removeButton();
    EXPECT_EQ(button->label(), "Move All to Trash…");
    press(button);
    EXPECT_EQ(asked(), (std::vector<FileURL>{downloads, FileURL("/Users/alex/Downloads/kit.zip")}));
    EXPECT_EQ(askedLabel(), "Remove copies in 2 groups");
    protect(downloads);
    EXPECT_TRUE(button->isEnabled());
    protect(FileURL("/Users/alex/Downloads/kit.zip"));
    EXPECT_FALSE(button->isEnabled());
}

// Scrolling and focus

TEST_F(DuplicatesPane, TabGoesFromRevealToTheChosenCopyItsButtonAndTheButtonThatRemoves) {
    const auto& pane = show("a1");
    choose(1);
    auto& list = *pane.copies();
    pane.revealButton()->setFocus(Qt::TabFocusReason);
    const auto tab = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
    tab(Qt::Key_Tab);
    EXPECT_TRUE(list.hasFocus()) << QApplication::focusWidget();
    EXPECT_EQ(list.currentIndex(), row(1));
    EXPECT_EQ(list.part(), CopiesList::Part::Choice);
    tab(Qt::Key_Tab);
    EXPECT_TRUE(list.hasFocus());
    EXPECT_EQ(list.part(), CopiesList::Part::Look);
    tab(Qt::Key_Tab);
    EXPECT_TRUE(pane.removeButton()->hasFocus());
    tab(Qt::Key_Backtab);
    EXPECT_TRUE(list.hasFocus());
    EXPECT_EQ(list.part(), CopiesList::Part::Look);
    tab(Qt::Key_Backtab);
    EXPECT_EQ(list.part(), CopiesList::Part::Choice);
    tab(Qt::Key_Backtab);
    EXPECT_TRUE(pane.revealButton()->hasFocus());
}

TEST_F(DuplicatesPane, ALoadThatFindsTheSameAgainLeavesScrollPositionAndFocus) {
    const auto& pane = show("a1");
    ground().resize(ContentView::kDetailNarrowest, 300);
    turn();
    auto& bar = *pane.scrollArea()->verticalScrollBar();
    pane.copies()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(pane.copies(), Qt::Key_Down);
    bar.setValue(60);
    auto again = tour();
    again.files.pop_back();
    publish({again, kit()});
    EXPECT_EQ(bar.value(), 60);
    EXPECT_TRUE(pane.copies()->hasFocus());
    EXPECT_EQ(pane.copies()->currentIndex(), row(1));
    select({"b2"});
    EXPECT_EQ(bar.value(), 0) << "another group starts at its top";
}

TEST_F(DuplicatesPane, ManyCopiesAreNoMoreWidgetsThanAFewAndTheKeysReachTheLast) {
    const auto& pane = show("a1");
    const auto widgets = pane.findChildren<QWidget*>().size();
    std::vector<UserFile> files;
    for (int i = 0; i < 500; ++i) {
        files.push_back(copyAt("Documents/" + std::to_string(i) + "/Tour.mov"));
    }
    publish({copies("a1", 1'420'000'000, files)});
    EXPECT_EQ(pane.header()->subtitle(), "500 identical copies • 1.42 GB each");
    EXPECT_EQ(pane.removeButton()->label(), "Keep Selected, Trash 499 Others…");
    EXPECT_EQ(pane.findChildren<QWidget*>().size(), widgets);
    pane.copies()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(pane.copies(), Qt::Key_End);
    QTest::keyClick(pane.copies(), Qt::Key_Space);
    turn();
    EXPECT_EQ(chosenRow(), 499);
    const QRect last = pane.copies()->placeOf(row(499), CopiesList::Part::Choice);
    EXPECT_TRUE(pane.copies()->viewport()->visibleRegion().contains(last)) << "the pane has scrolled there";
    press(pane.removeButton());
    EXPECT_EQ(asked().size(), 499U);
}

// Pictures for whoever wants to look

TEST_F(DuplicatesPane, ItIsDrawnInLightAndDark) {
    library.duplicates = all();
    openColumn();
    select({"a1"});
    keepBoth("pane-duplicates-one");
    choose(1);
    const QImage free = pictureOf(ground());
    column->one()->copies()->setFocus(Qt::TabFocusReason);
    keepBoth("pane-duplicates-choice");
    QTest::keyClick(column->one()->copies(), Qt::Key_Right);
    keepBoth("pane-duplicates-look");
    protect(downloads);
    EXPECT_NE(pictureOf(ground()), free);
    keepBoth("pane-duplicates-protected");
    select({"a1", "b2"});
    keepBoth("pane-duplicates-several");
}

TEST_F(DuplicatesPane, LargeTextMakesNoPartOfThePaneWiderThanThePane) {
    Look::setTextScale(1.5);
    auto& pane = show("a1");
    const int room = pane.scrollArea()->viewport()->width();
    EXPECT_LE(pane.scrollArea()->widget()->width(), room);
    EXPECT_EQ(pane.removeButton()->width(), room - 32);
    const QImage drawn = pane.removeButton()->grab().toImage();
    const QRgb ground = drawn.pixel(12, 6);
    int inkBegins = 6; // behind the edge
    const auto isInk = [&](int x) {
        for (int y = 6; y < drawn.height() - 6; ++y) {
            if (drawn.pixel(x, y) != ground) {
                return true;
            }
        }
        return false;
    };
    while (inkBegins < drawn.width() - 6 && !isInk(inkBegins)) {
        ++inkBegins;
    }
    EXPECT_GT(inkBegins, 10) << "all of the words have room, and none is cut";
    keepBoth("duplicates-pane-large-text");
    Look::setTextScale(1);
}
