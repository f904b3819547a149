#include "SweepPlan.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

SweepEntry row(const std::string& path, Bytes bytes) {
    return {FileURL(path), SweepCategory::caches, "Title", "Subtitle", bytes};
}

TEST(SweepPlan, TheFirstRowOfAPathStaysAndCountsOnce) {
    SweepPlan plan;
    plan.add(row("/a", 1));
    plan.add(row("/a", 2));
    plan.add(row("/A", 4)); // compared by the exact text
    EXPECT_EQ(plan.rows(), (std::vector{row("/a", 1), row("/A", 4)}));
    EXPECT_EQ(plan.bytes(), 5);
}

TEST(SweepPlan, WhoTakesTheRowsLeavesNothingBehind) {
    SweepPlan plan;
    plan.add(row("/a", 1));
    plan.countOne();
    EXPECT_EQ(plan.takeRows(), std::vector{row("/a", 1)});
    EXPECT_TRUE(plan.rows().empty());
    EXPECT_EQ(plan.count(), 0);
    EXPECT_EQ(plan.bytes(), 0);
    plan.add(row("/a", 2));
    EXPECT_EQ(plan.rows(), std::vector{row("/a", 2)});
}

} // namespace
} // namespace quillane
