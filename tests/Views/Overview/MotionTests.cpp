// What moves in the window, and that nothing does at rest.
#include "Components/CardSlot.h"
#include "Components/Look.h"
#include "Components/Note.h"
#include "Moving.h"
#include "Overview/CompositionBar.h"
#include "Overview/Hero.h"
#include "Overview/OverviewView.h"
#include "Overview/PutBackCard.h"
#include "WindowPicture.h"
#include "WindowTest.h"

namespace quillane {
namespace {

using Kind = AppLibrary::Phase::Kind;

class Motion : public WindowTest {
  protected:
    Motion() {
        startsIn = LibrarySection::overview;
        auto app = measuredApp("Alder", 1'000'000);
        app.leftovers = {leftover("/Users/alex/Library/Caches/Alder", "Caches", 4096)};
        app.leftovers.front().isCache = true;
        apps = {app};
        operation = {"Clean Now", clock.now(), {}, 1};
    }
    ~Motion() override { Look::setReducedMotion(false); }

    QStringList timed() const { return quillane::timed(*window); }
    QList<QAbstractAnimation*> moving() const { return quillane::moving(*window); }
    void letMotionEnd() const { quillane::letMotionEnd(*window); }
    OverviewView& view() const {
        return *qobject_cast<OverviewView*>(window->content(LibrarySection::overview));
    }

    std::vector<InstalledApp> apps;
    UndoableOperation operation;
};

TEST_F(Motion, AtRestNoTimerRuns) {
    library.lastOperation = operation;
    openReady(apps);
    letMotionEnd();
    EXPECT_TRUE(moving().isEmpty());
    EXPECT_EQ(timed(), QStringList());
    EXPECT_EQ(clock.sleepers(), 1U) << "the put-back card waits for the next change of its date";
}

TEST_F(Motion, WhatMovesDuringAScanRestsAfterIt) {
    open({Kind::scanning}, apps);
    EXPECT_FALSE(timed().isEmpty());
    library.phase = AppLibrary::Phase{Kind::ready};
    turn();
    EXPECT_FALSE(moving().isEmpty()) << "the bar fills";
    letMotionEnd();
    EXPECT_TRUE(moving().isEmpty());
    EXPECT_EQ(timed(), QStringList());
}

TEST_F(Motion, OutOfSightTheOverviewRests) {
    library.lastOperation = operation;
    open({Kind::scanning}, {});
    window->showSection(LibrarySection::applications);
    turn();
    EXPECT_EQ(clock.sleepers(), 0U);
    EXPECT_EQ(quillane::timed(view()), QStringList());
}

TEST_F(Motion, WithReducedMotionOnlyTimePasses) {
    Look::setReducedMotion(true);
    library.lastOperation = operation;
    library.accessJustGranted = true;
    open({Kind::scanning}, apps);
    EXPECT_EQ(timed(), QStringList());
    library.phase = AppLibrary::Phase{Kind::ready};
    library.lastOperation = std::optional<UndoableOperation>();
    library.accessJustGranted = false;
    turn();
    EXPECT_TRUE(moving().isEmpty());
    EXPECT_EQ(timed(), QStringList());
    EXPECT_FALSE(view().hero()->bar()->stretches().empty());
}

TEST_F(Motion, ACardThatGoesFadesAndCanNoLongerBeReached) {
    library.lastOperation = operation;
    library.accessJustGranted = true;
    library.inaccessible = std::unordered_set{FileURL("/a")};
    openReady({});
    letMotionEnd();
    library.lastOperation = std::optional<UndoableOperation>();
    library.accessJustGranted = false;
    library.inaccessible = std::unordered_set<FileURL>();
    turn();
    EXPECT_FALSE(view().putBackCard()->isVisible());
    EXPECT_FALSE(view().grantedNotice()->isVisible());
    int departures = 0;
    for (auto* const slot : view().findChildren<CardSlot*>())
        departures += slot->departure().state() == QAbstractAnimation::Running ? 1 : 0;
    EXPECT_EQ(departures, 3);
    EXPECT_EQ(clock.sleepers(), 0U);
    letMotionEnd();
    EXPECT_TRUE(moving().isEmpty());
}

TEST_F(Motion, IsDrawnOnItsWay) {
    library.lastOperation = operation;
    library.accessJustGranted = true;
    openReady(apps);
    letMotionEnd();
    turn();
    const QImage before = pictureOf(*window);
    library.trashState = TrashSweeper::State::measured(4096, 1);
    library.sweepSelection = std::set{SweepCategory::caches, SweepCategory::trash};
    library.accessJustGranted = false;
    library.lastOperation = std::optional<UndoableOperation>();
    turn();
    for (auto* const animation : moving()) {
        animation->pause();
        animation->setCurrentTime(40);
    }
    const QImage fading = pictureOf(*window);
    EXPECT_TRUE(keepPicture(fading, "overview-cards-fade"));
    EXPECT_NE(fading, before);
    for (auto* const slot : view().findChildren<CardSlot*>())
        slot->departure().setCurrentTime(CardSlot::kFadeMilliseconds + 60);
    turn();
    const QImage closing = pictureOf(*window);
    EXPECT_TRUE(keepPicture(closing, "overview-column-closes"));
    EXPECT_NE(closing, fading);
}

TEST_F(Motion, TheSectionsChangeWithoutMotion) {
    openReady(apps);
    letMotionEnd();
    window->showSection(LibrarySection::applications);
    turn();
    EXPECT_TRUE(moving().isEmpty());
}

} // namespace
} // namespace quillane
