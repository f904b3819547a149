#include "SweepReview.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

SweepEntry entry(const char* path, SweepCategory category, Bytes bytes) {
    return {FileURL(path), category, "Title", "Subtitle", bytes};
}

std::vector<SweepEntry> mixed() {
    return {entry("/b", SweepCategory::orphans, 300), entry("/a", SweepCategory::caches, 100),
            entry("/.Trash", SweepCategory::trash, 5000), entry("/c", SweepCategory::caches, 2000)};
}

TEST(SweepReview, ItsSectionsStandInTheOrderOfTheCategoriesAndKeepTheOrderOfTheirRows) {
    const SweepReview review(mixed());
    ASSERT_EQ(review.sections().size(), 3U);
    EXPECT_EQ(review.sections()[0].category, SweepCategory::caches);
    EXPECT_EQ(review.sections()[0].rows, (std::vector<std::size_t>{1, 3}));
    EXPECT_EQ(review.sections()[1].category, SweepCategory::orphans);
    EXPECT_EQ(review.sections()[2].category, SweepCategory::trash);
}

TEST(SweepReview, TheHeadlineCountsEverythingWhateverIsTicked) {
    SweepReview review(mixed());
    EXPECT_EQ(review.headline(), "4 items • 7 KB");
    review.setTicked(0, false);
    EXPECT_EQ(review.headline(), "4 items • 7 KB");
    EXPECT_EQ(SweepReview({entry("/a", SweepCategory::caches, 0)}).headline(), "1 item • Zero KB");
}

TEST(SweepReview, UntickingEveryRowLeavesNothingIncluded) {
    SweepReview review(mixed());
    for (std::size_t i = 0; i < 4; ++i) {
        review.setTicked(i, false);
    }
    EXPECT_EQ(review.includedCount(), 0U);
    EXPECT_TRUE(review.included().empty());
    EXPECT_EQ(review.footer(), "0 of 4 selected • Zero KB");
}

TEST(SweepReview, ATickedTrashRowAloneMakesTheButtonCleanAndEmptyTrash) {
    SweepReview review(mixed());
    for (const std::size_t i : {0U, 1U, 3U}) {
        review.setTicked(i, false);
    }
    EXPECT_EQ(review.buttonText(), "Clean and Empty Trash");
    EXPECT_TRUE(review.emptiesTrash());
}

TEST(SweepReview, TheTrashRowUntickedInAMixedPlanMakesTheButtonMoveToTrash) {
    SweepReview review(mixed());
    review.setTicked(2, false);
    EXPECT_EQ(review.buttonText(), "Move to Trash");
    EXPECT_FALSE(review.emptiesTrash());
}

TEST(SweepReview, ASectionKeepsItsPlaceWithASizeOfZeroWhenAllItsRowsAreUnticked) {
    SweepReview review(mixed());
    review.setTicked(1, false);
    review.setTicked(3, false);
    ASSERT_EQ(review.sections().size(), 3U);
    EXPECT_EQ(review.sections()[0].category, SweepCategory::caches);
    EXPECT_EQ(review.sections()[0].tickedBytes, 0);
}

TEST(SweepReview, InitiallyExcludedRowsStartUntickedAndAreCountedOutFromTheStart) {
    const SweepReview review(mixed(), {FileURL("/a"), FileURL("/c")});
    EXPECT_FALSE(review.isTicked(1));
    EXPECT_TRUE(review.isTicked(0));
    EXPECT_EQ(review.footer(), "2 of 4 selected • 5 KB");
}

TEST(SweepReview, TwoRowsOfOneLocationAreTickedTogether) {
    SweepReview review({entry("/a", SweepCategory::caches, 100), entry("/a", SweepCategory::caches, 100),
                        entry("/b", SweepCategory::caches, 1)});
    EXPECT_EQ(review.setTicked(1, false), (std::vector<std::size_t>{0, 1}));
    EXPECT_EQ(review.includedCount(), 1U);
    EXPECT_EQ(review.includedBytes(), 1);
}

TEST(SweepReview, TickingWhatIsTickedChangesNothing) {
    SweepReview review(mixed());
    EXPECT_TRUE(review.setTicked(0, true).empty());
    EXPECT_EQ(review.includedCount(), 4U);
}

TEST(SweepReview, TheIncludedRowsKeepTheOrderOfTheEntries) {
    SweepReview review(mixed());
    review.setTicked(1, false);
    const auto included = review.included();
    ASSERT_EQ(included.size(), 3U);
    EXPECT_EQ(included[0].url, FileURL("/b"));
    EXPECT_EQ(included[1].url, FileURL("/.Trash"));
    EXPECT_EQ(included[2].url, FileURL("/c"));
}

} // namespace
} // namespace quillane
