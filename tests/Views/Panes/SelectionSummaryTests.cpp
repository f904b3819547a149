#include "AppRecords.h"
#include "Applications/MultiSelectionSummary.h"
#include "Components/Label.h"
#include "Components/Note.h"
#include "Components/Stat.h"
#include "Components/ToolbarRow.h"
#include "Panes/BulkSummary.h"
#include <QListView>
#include <QScrollBar>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

using namespace quillane;

namespace {

using Pairs = std::vector<std::pair<QString, QString>>;

Pairs figures(const SelectionSummary& pane) {
    Pairs shown;
    for (const auto* cell : pane.stats()->cells()) {
        shown.emplace_back(cell->label(), cell->value());
    }
    return shown;
}

QStringList labels(const SelectionSummary& pane) {
    QStringList shown;
    const auto* const model = pane.list()->list()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        shown << model->index(row, 0).data(Qt::AccessibleTextRole).toString();
    }
    return shown;
}

std::vector<InstalledApp> pair() {
    auto small = measuredApp("Alder", 1'000'000);
    small.leftovers = {leftover("/l", "Caches", 2'000'000)};
    return {small, measuredApp("Birch", 6'000'000)};
}

} // namespace

TEST(MultiSelectionSummary, AddsUpWhatIsSelectedLargestFirst) {
    MultiSelectionSummary pane;
    pane.show(pair());
    EXPECT_EQ(pane.toolbar()->title(), "2 Apps");
    EXPECT_EQ(pane.heading()->text(), "2 apps selected");
    EXPECT_EQ(figures(pane), (Pairs{{"Combined Size", "9 MB"}, {"Support Files", "2 MB"}}));
    EXPECT_EQ(labels(pane), QStringList({"Birch, 6 MB", "Alder, 3 MB"}));
}

// As many as make a sort that does not keep equals show it: 16 and fewer stay in order by chance.
TEST(MultiSelectionSummary, ManyOfEqualSizeKeepTheirOrder) {
    std::vector<InstalledApp> apps;
    QStringList expected;
    for (int i = 10; i < 70; ++i) {
        apps.push_back(measuredApp("App " + std::to_string(i), 1'000'000));
        expected << QString("App %1, 1 MB").arg(i);
    }
    MultiSelectionSummary pane;
    pane.show(apps);
    EXPECT_EQ(labels(pane), expected);
}

TEST(MultiSelectionSummary, CountsIntelAloneAndOnlyWhereThereIsOne) {
    auto apps = pair();
    apps.push_back(measuredApp("Cedar", 1));
    apps[0].architecture = Architecture::intel;
    apps[1].architecture = Architecture::intel32;
    apps[2].architecture = Architecture::intel;
    MultiSelectionSummary pane;
    pane.show(apps);
    EXPECT_EQ(figures(pane).back(), std::pair(QString("Intel Only"), QString("2")));
    apps.erase(apps.begin(), apps.begin() + 1);
    apps.back().architecture = Architecture::powerPC;
    pane.show(apps);
    EXPECT_EQ(figures(pane).size(), 2U);
}

TEST(MultiSelectionSummary, AThousandApplicationsMakeNoWidgetForEachRow) {
    std::vector<InstalledApp> apps;
    for (int i = 0; i < 1000; ++i) {
        apps.push_back(measuredApp("App " + std::to_string(i), i));
    }
    MultiSelectionSummary pane;
    pane.show(apps);
    EXPECT_EQ(pane.heading()->text(), "1,000 apps selected");
    EXPECT_LT(pane.findChildren<QWidget*>().size(), 60);
}

TEST(BulkSummary, ShowsTitleTotalRowsAndTheListLargestFirst) {
    BulkSummary pane;
    pane.show("file", {{"a.mov", 1'000'000}, {"b.mov", 4'000'000}}, std::nullopt);
    EXPECT_EQ(pane.toolbar()->title(), "2 Files");
    EXPECT_EQ(pane.heading()->text(), "2 files selected");
    EXPECT_EQ(figures(pane), (Pairs{{"Combined Size", "5 MB"}, {"Rows", "2"}}));
    EXPECT_EQ(labels(pane), QStringList({"b.mov, 4 MB", "a.mov, 1 MB"}));
    EXPECT_TRUE(pane.note()->isHidden());
}

TEST(BulkSummary, ANoteStandsWhereThereIsOne) {
    BulkSummary pane;
    pane.show("file", {{"a", 1}, {"b", 1}}, "These are your own files. Nothing here can be regenerated.");
    EXPECT_FALSE(pane.note()->isHidden());
    EXPECT_EQ(pane.note()->text(), "These are your own files. Nothing here can be regenerated.");
}

TEST(BulkSummary, TheTotalIsTheSumOfTheRows) {
    EXPECT_EQ(BulkSummary::total({}), 0);
    EXPECT_EQ(BulkSummary::total({{"a", 3}, {"b", 4}}), 7);
}

TEST(BulkSummary, RowsOfEqualSizeKeepTheirOrder) {
    BulkSummary pane;
    pane.show("row", {{"c", 1}, {"a", 1}, {"b", 1}});
    EXPECT_EQ(labels(pane), QStringList({"c, 1 byte", "a, 1 byte", "b, 1 byte"}));
}

namespace {

// Where what is drawn differs from the ground, from left to right; the ground is what its corner shows.
std::pair<int, int> inkOf(const QImage& picture) {
    int left = picture.width();
    int right = -1;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != picture.pixel(0, 0)) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
    }
    return {left, right};
}

class ListOfSeveral : public testing::Test {
  protected:
    void open(int rows) {
        BulkSummary::Rows shown;
        for (int i = 0; i < rows; ++i) {
            shown.emplace_back("A location with a name that is much longer than the pane is wide",
                               1'234'567'890);
        }
        pane.show("location", shown);
        pane.resize(348, 500);
        static_cast<QWidget&>(pane).show();
        pane.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&pane));
    }
    QListView& list() const { return *pane.list()->list(); }
    // The row as it is drawn, without the line above it.
    QImage drawn(int row) const {
        return list()
            .viewport()
            ->grab(list().visualRect(list().model()->index(row, 0)).adjusted(0, 1, 0, 0))
            .toImage();
    }

    BulkSummary pane;
};

} // namespace

TEST_F(ListOfSeveral, TheFocusRingLeavesTheTextWhole) {
    open(2);
    const auto [left, right] = inkOf(drawn(0));
    list().setFocus(Qt::TabFocusReason);
    list().setCurrentIndex(list().model()->index(0, 0));
    const auto [ringLeft, ringRight] = inkOf(drawn(0));
    EXPECT_LE(ringLeft, left - 4);
    EXPECT_GE(ringRight, right + 4);
    EXPECT_GT(ringLeft, 0) << "and lies inside the card";
    EXPECT_LT(ringRight, list().viewport()->width() - 1);
}

TEST_F(ListOfSeveral, TheScrollBarLiesBesideTheSizes) {
    open(100);
    auto* const bar = list().verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    EXPECT_LT(inkOf(drawn(1)).second, bar->mapTo(&list(), QPoint()).x());
}
