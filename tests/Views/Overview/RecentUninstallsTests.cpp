#include "AppLibrary.h"
#include "Components/CardSlot.h"
#include "Components/Label.h"
#include "Components/Look.h"
#include "Components/Note.h"
#include "Components/PushButton.h"
#include "Components/Sheet.h"
#include "Components/SymbolButton.h"
#include "NotificationCenter.h"
#include "Overview/CategoryRow.h"
#include "Overview/Hero.h"
#include "Overview/OverviewView.h"
#include "Overview/RecentUninstallCard.h"
#include "Overview/RecentUninstallCards.h"
#include "RemovalWorld.h"
#include "Review/SweepDoneStage.h"
#include "Review/SweepPreviewSheet.h"
#include "Review/SweepReviewModel.h"
#include "Review/SweepReviewStage.h"
#include "State/ContentState.h"
#include "WindowPicture.h"
#include <QApplication>
#include <QCheckBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <optional>

namespace quillane {
namespace {

using Kind = AppLibrary::Phase::Kind;

// The Overview by itself over a real disk, with time and jobs in the test's hand.
class RecentUninstalls : public testing::Test {
  protected:
    RecentUninstalls() {
        Look::setReducedMotion(true);
        state.notifications = &notifications;
    }
    ~RecentUninstalls() override {
        m_view.reset();
        Look::setReducedMotion(false);
        Look::setDark(false);
    }

    // A leftover that lies on the disk.
    RecentUninstall::Leftover left(const std::string& name, bool isSure = true, Bytes bytes = 4'096) {
        const std::string path = "/Users/alex/Library/Caches/" + name;
        world.disk.file(path, name);
        return {FileURL(path), "Caches", bytes, isSure};
    }
    RecentUninstall record(const std::string& name, std::vector<RecentUninstall::Leftover> leftovers = {},
                           std::optional<std::string> identifier = std::nullopt) const {
        return {name, std::move(identifier), world.clock.now().addingSeconds(-180), std::move(leftovers)};
    }
    OverviewView& open(std::vector<RecentUninstall> records) {
        library.phase = AppLibrary::Phase{Kind::ready};
        library.recentUninstalls = std::move(records);
        m_view = std::make_unique<OverviewView>(library, state);
        m_view->resize(740, 708);
        m_view->show();
        m_view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_view.get()));
        turn();
        return *m_view;
    }
    void publish(std::vector<RecentUninstall> records) {
        library.recentUninstalls = std::move(records);
        turn();
    }
    void turn() {
        for (int i = 0; i < 3; ++i) {
            world.runner.settle();
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
    void finish() {
        world.runner.runAll();
        turn();
    }

    OverviewView& view() const { return *m_view; }
    void closeView() { m_view.reset(); }
    std::vector<RecentUninstallCard*> cards() const { return view().recentUninstalls()->cards(); }
    RecentUninstallCard& card(std::size_t number = 0) const { return *cards().at(number); }
    QStringList names() const { // of those that can be seen, from the top
        auto seen = cards();
        std::erase_if(seen, [](const auto* each) { return !each->isVisible(); });
        std::ranges::sort(seen, {}, [this](const auto* each) { return each->mapTo(&view(), QPoint()).y(); });
        QStringList names;
        for (const auto* const each : seen) {
            names << QString::fromStdString(each->record().name);
        }
        return names;
    }
    QStringList recorded() const {
        QStringList names;
        for (const auto& each : *library.recentUninstalls) {
            names << QString::fromStdString(each.name);
        }
        return names;
    }
    static void click(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton); }
    SweepPreviewSheet& review(std::size_t number = 0) {
        click(card(number).reviewButton());
        turn();
        EXPECT_NE(view().leftoverReview(), nullptr);
        return *view().leftoverReview();
    }
    // Confirms the review and lets the sweep run to its end.
    void confirm() {
        click(view().leftoverReview()->reviewStage()->mainButton());
        finish();
    }
    bool isThere(const std::string& name) const {
        return world.isThere(FileURL("/Users/alex/Library/Caches/" + name));
    }

    RemovalWorld world;
    AppLibrary library{world.platform};
    NotificationCenter notifications;
    ContentState state{LibrarySection::overview};

  private:
    std::unique_ptr<OverviewView> m_view;
};

} // namespace

// The cards

TEST_F(RecentUninstalls, EachRecordHasACardBetweenTheNoticeAndTheCategoriesInItsOrder) {
    library.accessJustGranted = true;
    open({record("Newest"), record("Older"), record("Oldest")});
    EXPECT_EQ(names(), QStringList({"Newest", "Older", "Oldest"}));
    const auto topOf = [this](const QWidget* widget) { return widget->mapTo(&view(), QPoint()).y(); };
    EXPECT_LT(topOf(view().grantedNotice()), topOf(&card(0)));
    EXPECT_LT(topOf(&card(2)), topOf(view().rows().front()));
}

TEST_F(RecentUninstalls, WithoutRecordsTheCategoriesFollowTheHeroAsCloselyAsEver) {
    open({record("One")});
    const int with = view().rows().front()->mapTo(&view(), QPoint()).y();
    const int height = card().height();
    publish({});
    EXPECT_EQ(names(), QStringList());
    EXPECT_EQ(view().rows().front()->mapTo(&view(), QPoint()).y(), with - height - 12);
}

TEST_F(RecentUninstalls, ANewRecordComesToTheFrontAndTheOtherCardsStayTheSame) {
    open({record("Older"), record("Oldest")});
    const auto before = cards();
    before.front()->dismissButton()->setFocus();
    publish({record("Newest"), record("Older"), record("Oldest")});
    EXPECT_EQ(names(), QStringList({"Newest", "Older", "Oldest"}));
    EXPECT_EQ(cards()[1], before[0]);
    EXPECT_EQ(cards()[2], before[1]);
    EXPECT_TRUE(before.front()->dismissButton()->hasFocus());
}

TEST_F(RecentUninstalls, AnApplicationRemovedAgainKeepsItsCardAtItsNewPlace) {
    open({record("Newest"), record("Again")});
    auto* const again = cards()[1];
    publish({record("Again", {left("a")}), record("Newest")});
    EXPECT_EQ(names(), QStringList({"Again", "Newest"}));
    EXPECT_EQ(cards()[0], again);
    EXPECT_TRUE(again->reviewButton()->isVisible());
}

TEST_F(RecentUninstalls, TwoStoredRecordsWithOneIdHaveACardEachAndGoTogether) {
    open({record("One", {}, "com.same"), record("Two", {}, "com.same"), record("Three")});
    EXPECT_EQ(names(), QStringList({"One", "Two", "Three"}));
    click(card(1).dismissButton());
    turn();
    EXPECT_EQ(names(), QStringList({"Three"}));
}

TEST_F(RecentUninstalls, ManyRecordsScrollAndTheColumnGetsNoWider) {
    std::vector<RecentUninstall> records;
    for (int i = 0; i < 60; ++i) {
        records.push_back(record(std::string(200, 'W') + std::to_string(i), {{FileURL("/x"), "Caches", 1}}));
    }
    open(records);
    EXPECT_EQ(names().size(), 60);
    const auto* const scroll = view().findChild<QScrollArea*>();
    EXPECT_GT(scroll->verticalScrollBar()->maximum(), 0);
    EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width());
    card(59).closeButton()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_GT(scroll->verticalScrollBar()->value(), 0) << "what has the focus is scrolled to";
}

TEST_F(RecentUninstalls, TabMeetsTheButtonsOfTheCardsInTheirOrderAlsoOfOnesThatCameLater) {
    open({record("Older", {left("a")})});
    publish({record("Newest"), record("Older", {left("a")})});
    view().hero()->button()->setEnabled(true);
    view().hero()->button()->setFocus(Qt::TabFocusReason);
    for (QWidget* const next :
         {static_cast<QWidget*>(card(0).dismissButton()), static_cast<QWidget*>(card(0).closeButton()),
          static_cast<QWidget*>(card(1).reviewButton()), static_cast<QWidget*>(card(1).dismissButton()),
          static_cast<QWidget*>(card(1).closeButton()),
          static_cast<QWidget*>(view().rows().front()->checkBox())}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), next);
    }
}

// Dismissing

TEST_F(RecentUninstalls, DismissAndTheCloseMarkForgetTheirRecordAndNothingOnTheDisk) {
    open({record("One", {left("one")}), record("Two", {left("two")}), record("Three")});
    click(card(1).dismissButton());
    turn();
    EXPECT_EQ(recorded(), QStringList({"One", "Three"}));
    EXPECT_EQ(names(), QStringList({"One", "Three"}));
    click(card(0).closeButton());
    turn();
    EXPECT_EQ(recorded(), QStringList({"Three"}));
    EXPECT_EQ(names(), QStringList({"Three"}));
    EXPECT_TRUE(isThere("one") && isThere("two"));
    EXPECT_EQ(view().leftoverReview(), nullptr);
}

TEST_F(RecentUninstalls, ReturnDismissesWhereTheFocusIsAndLeavesItOnTheNextCard) {
    open({record("One"), record("Two")});
    card(0).dismissButton()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    turn();
    EXPECT_EQ(recorded(), QStringList({"Two"}));
    EXPECT_TRUE(card(0).isAncestorOf(QApplication::focusWidget()));
}

TEST_F(RecentUninstalls, ACardThatFadesCanNoLongerBeReachedAndIsGoneAfterwards) {
    Look::setReducedMotion(false);
    open({record("One"), record("Two")});
    const QPointer gone = &card(0);
    auto* const slot = qobject_cast<CardSlot*>(gone->parentWidget());
    click(gone->dismissButton());
    turn();
    EXPECT_FALSE(gone->isVisible());
    EXPECT_EQ(names(), QStringList({"Two"}));
    ASSERT_EQ(slot->departure().state(), QAbstractAnimation::Running);
    publish({record("New"), record("Two")}); // while it fades
    EXPECT_EQ(names(), QStringList({"New", "Two"}));
    slot->departure().setCurrentTime(slot->departure().totalDuration());
    turn();
    EXPECT_TRUE(gone.isNull());
    EXPECT_EQ(names(), QStringList({"New", "Two"}));
}

TEST_F(RecentUninstalls, ACardThatGoesOutOfSightLeavesNothingBehind) {
    Look::setReducedMotion(false);
    open({record("One")});
    const QPointer gone = &card(0);
    view().hide();
    library.recentUninstalls = std::vector<RecentUninstall>();
    view().show();
    turn();
    EXPECT_TRUE(cards().empty());
    if (gone) { // it was drawn once more and fades
        auto* const slot = qobject_cast<CardSlot*>(gone->parentWidget());
        slot->departure().setCurrentTime(slot->departure().totalDuration());
        turn();
    }
    EXPECT_TRUE(gone.isNull());
    EXPECT_EQ(world.clock.sleepers(), 0U);
}

// The review of leftovers

TEST_F(RecentUninstalls, TheReviewListsWhatIsLeftWithWhatOnlyANameTiesToItUnticked) {
    open({record("Ostrich", {left("sure"), left("guess", false)})});
    const auto& listed = review().model().review();
    ASSERT_EQ(listed.entries().size(), 2U);
    EXPECT_EQ(listed.includedCount(), 1U);
    EXPECT_EQ(listed.included().front().url, FileURL("/Users/alex/Library/Caches/sure"));
    EXPECT_TRUE(view().leftoverReview()->isModal());
    EXPECT_TRUE(isThere("sure")) << "nothing moves before it is confirmed";
}

TEST_F(RecentUninstalls, WhatIsConfirmedMovesUnderTheLabelOfTheRemovalAndItsRecordGoes) {
    open({record("Other", {left("other")}), record("Ostrich", {left("sure"), left("guess", false)})});
    review(1);
    confirm();
    EXPECT_FALSE(isThere("sure"));
    EXPECT_TRUE(isThere("guess") && isThere("other"));
    ASSERT_TRUE(library.lastOperation->has_value());
    EXPECT_EQ((*library.lastOperation)->label, "Remove Ostrich leftovers");
    EXPECT_EQ(recorded(), QStringList({"Other"}));
    EXPECT_EQ(names(), QStringList({"Other"}));
    ASSERT_NE(view().leftoverReview(), nullptr);
    EXPECT_EQ(view().leftoverReview()->stage(), SweepPreviewSheet::Stage::done);
}

TEST_F(RecentUninstalls, TheRecordStaysWhileTheSweepRuns) {
    open({record("Ostrich", {left("sure")})});
    review();
    click(view().leftoverReview()->reviewStage()->mainButton());
    turn();
    ASSERT_TRUE(*library.isSweeping);
    EXPECT_EQ(recorded(), QStringList({"Ostrich"}));
    finish();
    EXPECT_EQ(recorded(), QStringList());
}

TEST_F(RecentUninstalls, OfTwoApplicationsWithOneNameTheFirstRecordGoesWhicheverWasReviewed) {
    open({record("Same", {left("first")}, "com.first"), record("Same", {left("second")}, "com.second")});
    review(1);
    confirm();
    EXPECT_FALSE(isThere("second"));
    EXPECT_TRUE(isThere("first"));
    ASSERT_EQ(library.recentUninstalls->size(), 1U);
    EXPECT_EQ(library.recentUninstalls->front().id(), "com.second");
}

TEST_F(RecentUninstalls, ASweepThatFailsIsToldAndItsRecordGoesAllTheSame) {
    open({record("Ostrich", {left("gone")})});
    review();
    std::filesystem::remove(world.disk.at("/Users/alex/Library/Caches/gone"));
    confirm();
    EXPECT_EQ(recorded(), QStringList());
    EXPECT_EQ(view().leftoverReview()->stage(), SweepPreviewSheet::Stage::done);
}

TEST_F(RecentUninstalls, AReviewThatIsCancelledForgetsNothing) {
    open({record("Ostrich", {left("sure")})});
    review().reject();
    turn();
    EXPECT_EQ(view().leftoverReview(), nullptr);
    EXPECT_EQ(recorded(), QStringList({"Ostrich"}));
    EXPECT_TRUE(isThere("sure"));
}

TEST_F(RecentUninstalls, WhereAllLeftoversAreGoneTheReviewSaysSoAndHasNothingToConfirm) {
    open({record("Ostrich", {{FileURL("/Users/alex/Library/Caches/gone"), "Caches", 1, true}})});
    auto& sheet = review();
    EXPECT_TRUE(sheet.model().review().entries().empty());
    EXPECT_FALSE(sheet.reviewStage()->mainButton()->isEnabled());
    EXPECT_TRUE(keepPicture(pictureOf(*view().leftoverReview()), "leftovers-gone"));
}

TEST_F(RecentUninstalls, WhatIsProtectedIsNotReviewed) {
    open({record("Ostrich", {left("kept"), left("free")})});
    library.setProtected(FileURL("/Users/alex/Library/Caches/kept"), true);
    EXPECT_EQ(review().model().review().entries().size(), 1U);
}

TEST_F(RecentUninstalls, NoTwoReviewsAreOpenAtOnce) {
    library.trashState = TrashSweeper::State::measured(1'000, 1);
    library.sweepSelection = std::set{SweepCategory::trash};
    open({record("Ostrich", {left("sure")})});
    ASSERT_TRUE(Hero::canSweep(library));
    const QPointer first = &review();
    notifications.post(NotificationName::kOpenSweepPreview);
    EXPECT_EQ(view().review(), nullptr);
    emit card().reviewWanted();
    EXPECT_EQ(view().leftoverReview(), first);
    first->reject();
    turn();
    view().openReview();
    ASSERT_NE(view().review(), nullptr);
    emit card().reviewWanted();
    EXPECT_EQ(view().leftoverReview(), nullptr);
}

TEST_F(RecentUninstalls, AReviewThatIsAskedForUnderAnotherSheetOpensAtItsEnd) {
    open({record("Ostrich", {left("sure")})});
    Sheet other({300, 200}, &view());
    other.open();
    emit card().reviewWanted();
    turn();
    EXPECT_EQ(view().leftoverReview(), nullptr);
    other.accept();
    turn();
    ASSERT_NE(view().leftoverReview(), nullptr);
    EXPECT_TRUE(view().leftoverReview()->isVisible());
}

TEST_F(RecentUninstalls, AWindowThatClosesMeanwhileStopsNeitherTheSweepNorItsEnd) {
    open({record("Ostrich", {left("sure")})});
    review();
    click(view().leftoverReview()->reviewStage()->mainButton());
    closeView();
    finish();
    EXPECT_FALSE(isThere("sure"));
    EXPECT_EQ(recorded(), QStringList());
}

// Looking at it

TEST_F(RecentUninstalls, LooksAsItShouldInLightAndDark) {
    open({record("Ostrich Chat", {left("a", true, 486'200'000)}), record("Penguin"),
          record(std::string(120, 'W'), {left("b", true, 1'000)})});
    for (const bool dark : {false, true}) {
        Look::setDark(dark);
        turn();
        EXPECT_TRUE(keepPicture(pictureOf(view()), dark ? "recent-uninstalls-dark" : "recent-uninstalls"));
    }
    Look::setDark(false);
    view().resize(576, 548);
    turn();
    EXPECT_TRUE(keepPicture(pictureOf(view()), "recent-uninstalls-narrow"));
}

} // namespace quillane
