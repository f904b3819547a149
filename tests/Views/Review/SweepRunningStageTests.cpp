#include "Components/ElidedLabel.h"
#include "Components/ProgressBar.h"
#include "Components/ProgressRing.h"
#include "SheetTest.h"

using namespace quillane;

namespace {

// The library's fields are set by hand, as a sweep sets them.
class SweepRunningStageTest : public SheetTest {
  protected:
    void show(std::size_t total = 4) {
        stage = std::make_unique<SweepRunningStage>(library, total);
        stage->resize(SweepPreviewSheet::kSize);
        stage->show();
        turn();
    }
    void begin(int total) {
        library.isSweeping = true;
        library.sweepTotal = total;
        library.sweepProcessed = 0;
        library.sweepReclaimedSoFar = Bytes{0};
        turn();
    }
    void advance(int processed, Bytes reclaimed, const std::string& status) {
        library.sweepProcessed = processed;
        library.sweepReclaimedSoFar = reclaimed;
        library.sweepStatus = std::optional<std::string>(status);
        turn();
    }

    std::unique_ptr<SweepRunningStage> stage;
};

} // namespace

TEST_F(SweepRunningStageTest, TellsHowFarTheSweepHasCome) {
    show();
    begin(142);
    advance(89, 15'580'000'000, "Gradle - Dependency cache");
    EXPECT_EQ(stage->figure()->text(), "15.58 GB");
    EXPECT_EQ(stage->caption()->text(), "reclaimed so far");
    EXPECT_EQ(stage->count()->text(), "89 of 142");
    EXPECT_EQ(stage->status()->text(), "Gradle - Dependency cache");
    EXPECT_EQ(stage->promise()->text(), "Moving to the Trash. Everything here can be put back.");
    EXPECT_EQ(stage->ring()->value(), 627);
    EXPECT_EQ(stage->bar()->value(), 627);
    EXPECT_EQ(stage->ring()->maximum(), SweepRunningStage::kSteps);
}

TEST_F(SweepRunningStageTest, AnAbsentStatusIsAnEllipsis) {
    show();
    begin(2);
    EXPECT_EQ(stage->status()->text(), QString::fromUtf8("…"));
}

TEST_F(SweepRunningStageTest, TheFractionOfNothingIsZero) {
    EXPECT_EQ(SweepRunningStage::progressFraction(0, 0), 0);
    EXPECT_EQ(SweepRunningStage::progressFraction(3, 0), 0);
    EXPECT_DOUBLE_EQ(SweepRunningStage::progressFraction(1, 4), 0.25);
    EXPECT_DOUBLE_EQ(SweepRunningStage::progressFraction(4, 4), 1);
}

TEST_F(SweepRunningStageTest, TheFiguresOfTheSweepBeforeAreNotShown) {
    library.sweepProcessed = 9;
    library.sweepTotal = 9;
    library.sweepReclaimedSoFar = Bytes{5'000'000};
    show(3);
    EXPECT_EQ(stage->count()->text(), "0 of 3");
    EXPECT_EQ(stage->figure()->text(), "Zero KB");
    EXPECT_EQ(stage->ring()->value(), 0);
}

TEST_F(SweepRunningStageTest, TheLastFiguresStayWhenTheSweepHasEnded) {
    show(1);
    begin(1);
    advance(1, 4'000'000, "first");
    library.isSweeping = false;
    library.sweepStatus = std::optional<std::string>();
    turn();
    EXPECT_EQ(stage->count()->text(), "1 of 1");
    EXPECT_EQ(stage->figure()->text(), "4 MB");
    EXPECT_EQ(stage->status()->text(), QString::fromUtf8("…"));
}

TEST_F(SweepRunningStageTest, LargeCountsAreGrouped) {
    show();
    begin(20'000);
    advance(1'234, 0, "x");
    EXPECT_EQ(stage->count()->text(), "1,234 of 20,000");
}

TEST_F(SweepRunningStageTest, AStatusThatWouldTurnTheTextRoundIsShownAsItIs) {
    show();
    begin(1);
    advance(0, 0, "a\u202Eb");
    EXPECT_EQ(stage->status()->text(), QString::fromUtf8("a‹U+202E›b"));
}

TEST_F(SweepRunningStageTest, RingAndBarEaseToANewValueTogether) {
    Look::setReducedMotion(false);
    show();
    begin(2);
    library.sweepProcessed = 1;
    turn();
    EXPECT_TRUE(stage->isAnimating());
    EXPECT_LT(stage->bar()->value(), 500);
    EXPECT_LT(stage->ring()->shownShare(), 0.5);
    stage->findChild<QVariantAnimation*>({}, Qt::FindDirectChildrenOnly)->setCurrentTime(180);
    EXPECT_EQ(stage->bar()->value(), 500);
    EXPECT_FALSE(stage->isAnimating());
}

TEST_F(SweepRunningStageTest, WithReducedMotionNothingMoves) {
    show();
    begin(2);
    library.sweepProcessed = 1;
    turn();
    EXPECT_FALSE(stage->isAnimating());
    EXPECT_EQ(stage->bar()->value(), 500);
    EXPECT_DOUBLE_EQ(stage->ring()->shownShare(), 0.5);
}

TEST_F(SweepRunningStageTest, ProgressIsAnnouncedAtMostEveryFiveSeconds) {
    show();
    EXPECT_EQ(stage->accessibleName(), "") << "nothing has begun";
    begin(10);
    EXPECT_EQ(stage->accessibleName(), "Zero KB reclaimed so far, 0 of 10");
    advance(1, 1'000'000, "a");
    world.clock.advance(std::chrono::milliseconds(4'999));
    advance(3, 3'000'000, "c");
    EXPECT_EQ(stage->accessibleName(), "Zero KB reclaimed so far, 0 of 10");
    world.clock.advance(std::chrono::milliseconds(1));
    advance(4, 4'000'000, "d");
    EXPECT_EQ(stage->accessibleName(), "4 MB reclaimed so far, 4 of 10");
}
