#include "Tables/TableColumn.h"
#include <gtest/gtest.h>
#include <numeric>
#include <vector>

namespace quillane {
namespace {

// Startup's columns: the widest set there is, with every rule of giving way.
std::vector<TableColumn> startupColumns() {
    return {{.width = 86},
            {.width = 180, .stretches = true},
            {.width = 114, .narrowest = 76, .narrowRank = 1},
            {.width = 124, .narrowest = 84, .narrowRank = 2},
            {.width = 134, .narrowest = 80, .narrowRank = 3},
            {.width = 60, .narrowest = 54, .narrowRank = 4}};
}

TEST(ColumnWidths, TheStretchingColumnTakesTheRest) {
    EXPECT_EQ(columnWidths(startupColumns(), 720), (std::vector<int>{86, 202, 114, 124, 134, 60}));
}

TEST(ColumnWidths, OthersGiveWayInTheirOrderBeforeItFallsUnderItsLeast) {
    EXPECT_EQ(columnWidths(startupColumns(), 698), (std::vector<int>{86, 180, 114, 124, 134, 60}));
    EXPECT_EQ(columnWidths(startupColumns(), 678), (std::vector<int>{86, 180, 94, 124, 134, 60}));
    EXPECT_EQ(columnWidths(startupColumns(), 650), (std::vector<int>{86, 180, 76, 114, 134, 60}));
    EXPECT_EQ(columnWidths(startupColumns(), 600), (std::vector<int>{86, 180, 76, 84, 114, 60}));
    EXPECT_EQ(columnWidths(startupColumns(), 560), (std::vector<int>{86, 180, 76, 84, 80, 54}));
}

TEST(ColumnWidths, OnlyThenDoesTheStretchingColumnGiveSoNothingScrollsSideways) {
    const std::vector<int> widths = columnWidths(startupColumns(), 520);
    EXPECT_EQ(std::accumulate(widths.begin(), widths.end(), 0), 520);
    EXPECT_EQ(widths[1], 140);
}

TEST(ColumnWidths, AStretchingColumnStopsAtItsWidest) {
    const std::vector<TableColumn> orphans{{.width = 200, .stretches = true, .widest = 280}, {.width = 90}};
    EXPECT_EQ(columnWidths(orphans, 340), (std::vector<int>{250, 90}));
    EXPECT_EQ(columnWidths(orphans, 700), (std::vector<int>{280, 90}));
}

TEST(ColumnWidths, NoColumnsNeedNoWidth) {
    EXPECT_TRUE(columnWidths({}, 500).empty());
}

} // namespace
} // namespace quillane
