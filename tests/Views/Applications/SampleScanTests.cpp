#include "Applications/AppDetailView.h"
#include "Applications/ApplicationsDetail.h"
#include "Applications/ApplicationsTable.h"
#include "Applications/StatusLine.h"
#include "Components/DetailHeader.h"
#include "Components/Label.h"
#include "Components/ShownText.h"
#include "IconCache.h"
#include "NotificationCenter.h"
#include "Panes/PanePlaceholder.h"
#include "SamplePlatform.h"
#include "Shell/ContentView.h"
#include "Tables/TableRole.h"
#include "Tables/TableView.h"
#include "Welcomed.h"
#include <QApplication>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <set>

using namespace quillane;

namespace {

// The window over a Mac that lies on disk, from the first look at it to the end of the scan.
class SampleScan : public testing::Test {
  protected:
    SampleScan() { IconCache::shared().attach(&sample.platform); }
    ~SampleScan() override {
        window.reset();
        IconCache::shared().attach(nullptr);
    }

    void open() {
        window = std::make_unique<ContentView>(library, notifications);
        window->showSection(LibrarySection::applications);
        window->show();
        draw();
    }
    void draw() {
        sample.runner.settle();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        sample.runner.settle();
    }
    // Runs one job of the pools after the other, drawing after each, until the status line says something
    // that begins with this.
    bool runUntilStatus(const QString& words) {
        while (!status().startsWith(words)) {
            if (sample.runner.waitingJobs() == 0) {
                return false;
            }
            sample.runner.runJob();
            draw();
        }
        return true;
    }
    ApplicationsTable& applications() const {
        return *qobject_cast<ApplicationsTable*>(window->content(LibrarySection::applications));
    }
    TableView& table() const { return *applications().table(); }
    QString status() const { return applications().statusLine()->left()->text(); }
    QString total() const { return applications().statusLine()->right()->text(); }
    QModelIndex cell(int row, int column) const { return table().model()->index(row, column); }
    int spinners() const {
        int count = 0;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            count += cell(row, 1).data(kBusyRole).toBool() ? 1 : 0;
        }
        return count;
    }

    SamplePlatform sample{SampleMac::small()};
    Welcomed welcomed{sample.defaults};
    AppLibrary library{sample.platform};
    NotificationCenter notifications;
    std::unique_ptr<ContentView> window;
};

} // namespace

TEST_F(SampleScan, TheStatusLineTellsEachStepAndTheTableFillsOnTheWay) {
    open();
    EXPECT_EQ(status(), "Finding applications…");
    EXPECT_EQ(table().model()->rowCount(), 0);

    ASSERT_TRUE(runUntilStatus("Measuring"));
    const int found = table().model()->rowCount();
    EXPECT_GT(found, 5);
    EXPECT_EQ(spinners(), found) << "found, and none measured yet";
    EXPECT_EQ(total(), "");

    ASSERT_TRUE(runUntilStatus(QString::number(found) + " apps"));
    EXPECT_EQ(spinners(), 0);
    EXPECT_TRUE(total().endsWith(" total"));
}

TEST_F(SampleScan, EveryExpectedApplicationStandsInTheTable) {
    open();
    ASSERT_TRUE(runUntilStatus("Measuring"));
    sample.runner.runAll();
    draw();
    std::multiset<QString> expected;
    for (const auto& app : sample.expectedApplications()) {
        if (app.source != AppSource::system) {
            expected.insert(shownName(app.name));
        }
    }
    std::multiset<QString> shown;
    for (int row = 0; row < table().model()->rowCount(); ++row) {
        shown.insert(cell(row, 0).data().toString());
    }
    EXPECT_EQ(shown, expected);
}

TEST_F(SampleScan, ASelectionMadeDuringTheScanIsKeptToItsEndAndThroughTheNext) {
    open();
    ASSERT_TRUE(runUntilStatus("Measuring"));
    table().selectionModel()->select(cell(3, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    const QString name = cell(3, 0).data().toString();
    sample.runner.runAll();
    draw();
    library.refresh(AppLibrary::ScanReason::user);
    sample.runner.runAll();
    draw();
    const auto selected = table().selectionModel()->selectedRows();
    ASSERT_EQ(selected.size(), 1);
    EXPECT_EQ(selected.front().data().toString(), name);
    auto* const detail = qobject_cast<ApplicationsDetail*>(window->detail(LibrarySection::applications));
    ASSERT_EQ(detail->currentWidget(), detail->one());
    EXPECT_EQ(detail->one()->header()->title(), name);
}

TEST_F(SampleScan, AnApplicationThatIsGoneAtTheNextScanLeavesTheTableAndThePane) {
    open();
    ASSERT_TRUE(runUntilStatus("Measuring"));
    sample.runner.runAll();
    draw();
    const FileURL doomed = library.visibleApps().front().url;
    window->state().selection = {doomed};
    draw();
    auto* const detail = qobject_cast<ApplicationsDetail*>(window->detail(LibrarySection::applications));
    ASSERT_EQ(detail->currentWidget(), detail->one());
    std::filesystem::remove_all(sample.disk.path() + doomed.path());
    library.refresh(AppLibrary::ScanReason::user);
    sample.runner.runAll();
    draw();
    ASSERT_FALSE(library.appWithID(doomed).has_value());
    EXPECT_EQ(static_cast<QWidget*>(detail->placeholder()), detail->currentWidget());
    EXPECT_TRUE(table().selectionModel()->selectedRows().isEmpty());
}
