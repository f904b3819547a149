#include "AppRecords.h"
#include "BulkSummary.h"
#include "Label.h"
#include "MultiSelectionSummary.h"
#include "Note.h"
#include "Stat.h"
#include "ToolbarRow.h"
#include <QListView>
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
    pane.show("2 files selected", {{"a.mov", 1'000'000}, {"b.mov", 4'000'000}}, std::nullopt);
    EXPECT_EQ(pane.heading()->text(), "2 files selected");
    EXPECT_EQ(figures(pane), (Pairs{{"Combined Size", "5 MB"}, {"Rows", "2"}}));
    EXPECT_EQ(labels(pane), QStringList({"b.mov, 4 MB", "a.mov, 1 MB"}));
    EXPECT_TRUE(pane.note()->isHidden());
}

TEST(BulkSummary, ANoteStandsWhereThereIsOne) {
    BulkSummary pane;
    pane.show("2 files selected", {{"a", 1}, {"b", 1}},
              "These are your own files. Nothing here can be regenerated.");
    EXPECT_FALSE(pane.note()->isHidden());
    EXPECT_EQ(pane.note()->text(), "These are your own files. Nothing here can be regenerated.");
}

TEST(BulkSummary, TheTotalIsTheSumOfTheRows) {
    EXPECT_EQ(BulkSummary::total({}), 0);
    EXPECT_EQ(BulkSummary::total({{"a", 3}, {"b", 4}}), 7);
}

TEST(BulkSummary, RowsOfEqualSizeKeepTheirOrder) {
    BulkSummary pane;
    pane.show("3 rows", {{"c", 1}, {"a", 1}, {"b", 1}});
    EXPECT_EQ(labels(pane), QStringList({"c, 1 byte", "a, 1 byte", "b, 1 byte"}));
}
