#include "Review/ResultMark.h"
#include "SheetTest.h"
#include "Shell/ContentView.h"
#include <QHeaderView>

using namespace quillane;
using Stage = SweepPreviewSheet::Stage;

namespace {

class SweepPreviewSheetTest : public SheetTest {};

FileURL pathOf(const SweepEntry& entry) {
    return entry.url;
}

} // namespace

// ---- The words of the review

TEST_F(SweepPreviewSheetTest, TheReviewSaysWhatItListsAndThatNothingHasHappenedYet) {
    open(mixedPlan());
    EXPECT_EQ(sheet->stage(), Stage::review);
    EXPECT_EQ(review().headline()->text(), QString::fromUtf8("4 items • 8.3 MB"));
    EXPECT_EQ(review().explanation()->text(),
              "Every path below will move to the Trash. Untick anything you want to keep. Nothing happens "
              "until you press the button at the bottom.");
    EXPECT_EQ(review().count()->text(), QString::fromUtf8("4 of 4 selected • 8.3 MB"));
    EXPECT_EQ(review().trashNote()->text(),
              "The Trash is emptied first, so everything else here stays recoverable.");
    EXPECT_EQ(review().cancelButton()->label(), "Cancel");
}

TEST_F(SweepPreviewSheetTest, OneItemIsOneItem) {
    open({reviewRow("/a", SweepCategory::caches, 0)});
    EXPECT_EQ(review().headline()->text(), QString::fromUtf8("1 item • Zero KB"));
}

TEST_F(SweepPreviewSheetTest, TheHeadlineDoesNotFollowTheTicksAndTheFooterDoes) {
    open(mixedPlan());
    click(row(0, 0));
    EXPECT_EQ(review().headline()->text(), QString::fromUtf8("4 items • 8.3 MB"));
    EXPECT_EQ(review().count()->text(), QString::fromUtf8("3 of 4 selected • 7.3 MB"));
}

// ---- Ticking

TEST_F(SweepPreviewSheetTest, AClickAnywhereInARowUnticksItAndAnotherTicksIt) {
    open(mixedPlan());
    for (const int x : {45, 320, 600}) { // the box, the words, the size
        click(row(0, 1), x);
        EXPECT_FALSE(isTicked(row(0, 1))) << x;
        click(row(0, 1), x);
        EXPECT_TRUE(isTicked(row(0, 1))) << x;
    }
    EXPECT_TRUE(isTicked(row(0, 0)));
}

TEST_F(SweepPreviewSheetTest, APressThatIsLetGoOnAnotherRowTicksNothing) {
    open(mixedPlan());
    const auto centre = [&](const QModelIndex& index) { return list().visualRect(index).center(); };
    QTest::mousePress(list().viewport(), Qt::LeftButton, {}, centre(row(0, 0)));
    QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, centre(row(0, 1)));
    EXPECT_EQ(sheet->model().review().includedCount(), 4U);
}

TEST_F(SweepPreviewSheetTest, TheOtherButtonsOfTheMouseTickNothing) {
    open(mixedPlan());
    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        QTest::mouseClick(list().viewport(), button, {}, list().visualRect(row(0, 0)).center());
        EXPECT_TRUE(isTicked(row(0, 0))) << button;
    }
}

TEST_F(SweepPreviewSheetTest, AClickOnACategoryChangesNothing) {
    open(mixedPlan());
    const QModelIndex section = list().model()->index(0, 0);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(section).center());
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(section).center());
    EXPECT_EQ(sheet->model().review().includedCount(), 4U);
    EXPECT_TRUE(list().isExpanded(section));
}

TEST_F(SweepPreviewSheetTest, WhileAPutBackRunsNothingCanBeConfirmedAndAfterwardsItCan) {
    library.isPuttingBack = true;
    open(mixedPlan());
    EXPECT_FALSE(mainButton().isEnabled());
    click(row(0, 0)); // a tick changes nothing about it
    EXPECT_FALSE(mainButton().isEnabled());
    press(Qt::Key_Return);
    emit review().confirmed();
    turn();
    EXPECT_EQ(sheet->stage(), Stage::review);
    EXPECT_EQ(confirmations, 0);
    library.isPuttingBack = false;
    turn();
    EXPECT_TRUE(mainButton().isEnabled());
    press(Qt::Key_Return);
    finish();
    EXPECT_EQ(confirmations, 1);
}

TEST_F(SweepPreviewSheetTest, UntickingEveryRowDisablesTheMainButtonAndReturnDoesNothing) {
    open(mixedPlan());
    for (const auto& [section, entry] : {std::pair{0, 0}, {0, 1}, {1, 0}, {2, 0}}) {
        click(row(section, entry));
    }
    EXPECT_FALSE(mainButton().isEnabled());
    EXPECT_EQ(review().count()->text(), QString::fromUtf8("0 of 4 selected • Zero KB"));
    press(Qt::Key_Return);
    finish();
    EXPECT_EQ(sheet->stage(), Stage::review);
    EXPECT_EQ(confirmations, 0);
}

TEST_F(SweepPreviewSheetTest, ATickedTrashRowAloneMakesTheButtonCleanAndEmptyTrash) {
    open(mixedPlan());
    for (const auto& [section, entry] : {std::pair{0, 0}, {0, 1}, {1, 0}}) {
        click(row(section, entry));
    }
    EXPECT_EQ(mainButton().label(), "Clean and Empty Trash");
    EXPECT_EQ(mainButton().accessibleName(), "Clean and Empty Trash");
    EXPECT_EQ(mainButton().role(), PushButton::Role::Permanent);
    EXPECT_TRUE(mainButton().isEnabled());
    EXPECT_TRUE(review().trashNote()->isVisible());
}

TEST_F(SweepPreviewSheetTest, TheTrashRowUntickedInAMixedPlanTakesTheNoteAndTheRedAway) {
    open(mixedPlan());
    EXPECT_EQ(mainButton().role(), PushButton::Role::Permanent);
    EXPECT_TRUE(review().trashNote()->isVisible());
    click(row(2, 0));
    EXPECT_EQ(mainButton().label(), "Move to Trash");
    EXPECT_EQ(mainButton().role(), PushButton::Role::Filled);
    EXPECT_FALSE(review().trashNote()->isVisible());
    click(row(2, 0));
    EXPECT_EQ(mainButton().label(), "Clean and Empty Trash");
}

TEST_F(SweepPreviewSheetTest, ASectionKeepsItsPlaceAndSpellsOutItsZeroWhenAllItsRowsAreUnticked) {
    open(mixedPlan());
    click(row(0, 0));
    click(row(0, 1));
    const QModelIndex section = list().model()->index(0, 0);
    EXPECT_EQ(section.data().toString(), "App Caches");
    EXPECT_EQ(section.data(SweepReviewModel::kSizeRole).toString(), "Zero KB");
    EXPECT_EQ(list().model()->rowCount(section), 2);
}

TEST_F(SweepPreviewSheetTest, RowsThatWereExcludedStartUntickedAndAreCountedOutFromTheStart) {
    open(mixedPlan(), {FileURL("/Users/alex/Library/Caches/first")});
    EXPECT_FALSE(isTicked(row(0, 0)));
    EXPECT_TRUE(isTicked(row(0, 1)));
    EXPECT_EQ(review().count()->text(), QString::fromUtf8("3 of 4 selected • 7.3 MB"));
    press(Qt::Key_Return);
    finish();
    ASSERT_EQ(confirmed.size(), 3U);
    EXPECT_EQ(std::ranges::count(confirmed, FileURL("/Users/alex/Library/Caches/first"), pathOf), 0);
}

// ---- Leaving

TEST_F(SweepPreviewSheetTest, CancelClosesItAndNothingHasHappened) {
    open(mixedPlan());
    click(review().cancelButton());
    finish();
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(confirmations, 0);
}

TEST_F(SweepPreviewSheetTest, EscapeCancelsTheReview) {
    open(mixedPlan());
    press(Qt::Key_Escape);
    finish();
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(confirmations, 0);
}

TEST_F(SweepPreviewSheetTest, ReturnOnCancelCancelsThoughTheMainButtonIsTheDefault) {
    open(mixedPlan());
    press(Qt::Key_Tab);
    ASSERT_TRUE(review().cancelButton()->hasFocus());
    press(Qt::Key_Return);
    finish();
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(confirmations, 0);
}

TEST_F(SweepPreviewSheetTest, BackInTheListReturnIsForTheMainButtonAgain) {
    open(mixedPlan());
    press(Qt::Key_Tab);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_TRUE(list().hasFocus());
    press(Qt::Key_Return);
    finish();
    EXPECT_EQ(confirmations, 1);
}

TEST_F(SweepPreviewSheetTest, AReturnThatIsHeldDownSinceBeforeTheSheetConfirmsNothing) {
    open(mixedPlan());
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, "\r", true);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &held);
    }
    turn();
    EXPECT_EQ(sheet->stage(), Stage::review);
    EXPECT_EQ(confirmations, 0);
    press(Qt::Key_Return);
    EXPECT_EQ(sheet->stage(), Stage::running) << "pressed anew";
    finish();
}

TEST_F(SweepPreviewSheetTest, NothingBeginsWhileAnotherSweepRuns) {
    open(mixedPlan());
    library.isSweeping = true;
    press(Qt::Key_Return);
    EXPECT_EQ(sheet->stage(), Stage::review);
    EXPECT_EQ(confirmations, 0);
    library.isSweeping = false;
}

TEST_F(SweepPreviewSheetTest, WhileTheSweepRunsNothingClosesIt) {
    present(mixedPlan());
    click(&mainButton());
    turn();
    ASSERT_EQ(sheet->stage(), Stage::running);
    press(Qt::Key_Escape);
    press(Qt::Key_Return);
    press(Qt::Key_Space);
    EXPECT_FALSE(sheet->close());
    sheet->reject();
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->stage(), Stage::running);
    EXPECT_TRUE(sheet->runningStage()->findChildren<QAbstractButton*>().isEmpty());
    finish();
    EXPECT_EQ(sheet->stage(), Stage::done);
}

// ---- The sweep

TEST_F(SweepPreviewSheetTest, WhatStandsTickedWhenTheButtonIsPressedIsSweptInItsOrder) {
    open(mixedPlan());
    click(row(0, 1));
    click(&mainButton());
    EXPECT_EQ(sheet->stage(), Stage::running);
    turn();
    ASSERT_EQ(confirmed.size(), 3U);
    EXPECT_EQ(confirmed[0].url, FileURL("/Users/alex/Library/Relay"));
    EXPECT_EQ(confirmed[1].url, FileURL("/Users/alex/Library/Caches/first"));
    EXPECT_EQ(confirmed[2].category, SweepCategory::trash);
    EXPECT_EQ(confirmations, 1);
}

TEST_F(SweepPreviewSheetTest, AWindowThatGoesWhileTheSweepRunsLeavesItToItsEnd) {
    world.disk.file("Users/alex/Library/Caches/first", "1");
    world.disk.file("Users/alex/Library/Caches/second", "2");
    present({reviewRow("/Users/alex/Library/Caches/first", SweepCategory::caches, 1),
             reviewRow("/Users/alex/Library/Caches/second", SweepCategory::caches, 1)});
    press(Qt::Key_Return);
    turn();
    delete sheet;
    finish();
    EXPECT_FALSE(*library.isSweeping);
    EXPECT_FALSE(world.isThere(FileURL("/Users/alex/Library/Caches/second")));
    ASSERT_TRUE(library.lastOperation->has_value());
    EXPECT_EQ((*library.lastOperation)->moves.size(), 2U);
    EXPECT_EQ((*library.lastOperation)->label, "Clean Now");
}

TEST_F(SweepPreviewSheetTest, ALibraryThatGoesWhileTheSweepRunsIsSafe) {
    std::optional<AppLibrary> other(std::in_place, world.platform);
    sheet = SweepPreviewSheet::present(*other, BulkRemoval::make("Clean Now", mixedPlan()), &window);
    activate();
    press(Qt::Key_Return);
    turn();
    delete sheet; // the screens go first
    other.reset();
    finish();
}

TEST_F(SweepPreviewSheetTest, TheKeyboardAloneDoesTheWholeLoop) {
    for (const auto* name : {"first", "second"}) {
        world.disk.file(std::string("Users/alex/Library/Caches/") + name, "content");
    }
    present({reviewRow("/Users/alex/Library/Caches/first", SweepCategory::caches, 7),
             reviewRow("/Users/alex/Library/Caches/second", SweepCategory::caches, 7)});
    ASSERT_TRUE(list().hasFocus());
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_TRUE(isTicked(row(0, 0)));
    EXPECT_FALSE(isTicked(row(0, 1)));
    press(Qt::Key_Return);
    EXPECT_EQ(sheet->stage(), Stage::running);
    finish();
    ASSERT_EQ(sheet->stage(), Stage::done);
    EXPECT_FALSE(world.isThere(FileURL("/Users/alex/Library/Caches/first")));
    EXPECT_TRUE(world.isThere(FileURL("/Users/alex/Library/Caches/second")));
    EXPECT_EQ(sheet->doneStage()->caption()->text(), "reclaimed");
    press(Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(sheet.isNull()) << "it is closed and gone";
}

TEST_F(SweepPreviewSheetTest, AScanThatEndsWhileItIsOpenChangesNoRowOfIt) {
    world.disk.file("Users/alex/Library/Caches/first", "content");
    present({reviewRow("/Users/alex/Library/Caches/first", SweepCategory::caches, 7),
             reviewRow("/Users/alex/Library/Caches/second", SweepCategory::caches, 7)});
    const auto before = sheet->model().review().entries();
    library.refresh(AppLibrary::ScanReason::user);
    finish();
    ASSERT_EQ(library.phase->kind, AppLibrary::Phase::Kind::ready);
    EXPECT_EQ(sheet->model().review().entries(), before);
    EXPECT_EQ(review().count()->text(), "2 of 2 selected • 14 bytes");
    EXPECT_EQ(sheet->stage(), Stage::review);
}

TEST_F(SweepPreviewSheetTest, WhatIsProtectedOrVanishesWhileItIsOpenStaysOrIsToldAndTheRestMoves) {
    for (const auto* name : {"protected", "vanishing", "moving"}) {
        world.disk.file(std::string("Users/alex/Library/Caches/") + name, "content");
    }
    const FileURL caches("/Users/alex/Library/Caches");
    present({reviewRow("/Users/alex/Library/Caches/protected", SweepCategory::caches, 7),
             reviewRow("/Users/alex/Library/Caches/vanishing", SweepCategory::caches, 7),
             reviewRow("/Users/alex/Library/Caches/moving", SweepCategory::caches, 7)});
    library.setProtected(caches.appending("protected"), true);
    ASSERT_TRUE(world.realTrash.moveToTrash(caches.appending("vanishing")).ok());
    press(Qt::Key_Return);
    finish();
    ASSERT_EQ(sheet->stage(), Stage::done);
    EXPECT_TRUE(world.isThere(caches.appending("protected")));
    EXPECT_FALSE(world.isThere(caches.appending("moving")));
    EXPECT_EQ(sheet->doneStage()->putBack()->text(), "1 items are in the Trash and can be put back");
    EXPECT_NE(sheet->doneStage()->failures(), nullptr);
    EXPECT_EQ(*library.sweepProcessed, 2);
}

TEST_F(SweepPreviewSheetTest, TabGoesFromTheListToCancelToTheMainButtonAndRound) {
    open(mixedPlan());
    EXPECT_TRUE(list().hasFocus());
    press(Qt::Key_Tab);
    EXPECT_TRUE(review().cancelButton()->hasFocus());
    press(Qt::Key_Tab);
    EXPECT_TRUE(mainButton().hasFocus());
    press(Qt::Key_Tab);
    EXPECT_TRUE(list().hasFocus());
}

TEST_F(SweepPreviewSheetTest, SpaceOnTheMainButtonPressesIt) {
    open(mixedPlan());
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(sheet->stage(), Stage::running);
}

TEST_F(SweepPreviewSheetTest, EveryControlHasAName) {
    openDone({{{SweepCategory::caches, 5}}, 1, 0, {{FileURL("/a"), "No access", true}}});
    for (const auto* widget : sheet->findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                               qobject_cast<const QAbstractItemView*>(widget) != nullptr ||
                               qobject_cast<const QProgressBar*>(widget) != nullptr;
        if (isControl && qobject_cast<const QHeaderView*>(widget) == nullptr) { // the list hides its header
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->metaObject()->className();
        }
    }
}

TEST_F(SweepPreviewSheetTest, ItIsOfItsSizeInTheMiddleOfTheWindowWhichItBlocks) {
    window.setGeometry(0, 0, 780, 760); // all of it on the screen
    open(mixedPlan());
    EXPECT_EQ(sheet->size(), QSize(640, 660));
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet->geometry().center(), window.geometry().center());
}

TEST_F(SweepPreviewSheetTest, IsWholeInTheSmallestWindow) {
    window.setGeometry(QRect(QPoint(), ContentView::kMinimumSize));
    open(mixedPlan());
    EXPECT_EQ(sheet->size(), QSize(640, 560));
    EXPECT_TRUE(window.geometry().contains(sheet->geometry()));
    const QRect button(mainButton().mapTo(sheet, QPoint()), mainButton().size());
    EXPECT_TRUE(sheet->rect().contains(button));
    EXPECT_GT(list().height(), 300) << "the list alone gives way";
}

TEST_F(SweepPreviewSheetTest, AllStagesFollowASwitchBetweenLightAndDark) {
    report.failures = {{FileURL("/a"), "Failed", false}};
    open(mixedPlan());
    const auto recolours = [this] {
        const QImage light = sheet->grab().toImage();
        Look::setDark(true);
        QCoreApplication::processEvents();
        const QImage dark = sheet->grab().toImage();
        Look::setDark(false);
        QCoreApplication::processEvents();
        const QPoint middle(320, 20); // the page
        EXPECT_GT(light.pixelColor(middle).lightnessF(), 0.9F);
        EXPECT_LT(dark.pixelColor(middle).lightnessF(), 0.2F);
        EXPECT_EQ(sheet->grab().toImage(), light);
    };
    recolours();
    press(Qt::Key_Return);
    recolours();
    finish();
    ASSERT_EQ(sheet->stage(), Stage::done);
    recolours();
}
