#pragma once
#include "AppLibrary.h"
#include "AppRecords.h"
#include "FakeMenuBarExtra.h"
#include "FakeMetadata.h"
#include "FakePreviewPanel.h"
#include "FakePreviews.h"
#include "FakeWorkspace.h"
#include "IconCache.h"
#include "ManualClock.h"
#include "NotificationCenter.h"
#include "Platform.h"
#include "PosixFileSystem.h"
#include "RemovalFakes.h"
#include "ScriptedCommandRunner.h"
#include "Shell/ContentView.h"
#include "StepTaskRunner.h"
#include "Tables/TableView.h"
#include "TemporaryFolder.h"
#include "Welcomed.h"
#include <QApplication>
#include <QHeaderView>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace quillane {

class ApplicationsDetail;
class ApplicationsTable;
class TableView;

// The window over a library that the test fills by hand, on a machine with an empty disk, whose time and jobs
// move only when the test says so.
class WindowTest : public testing::Test {
  protected:
    WindowTest();
    ~WindowTest() override;

    // Opens the window over these applications, as after a scan.
    ContentView& openReady(std::vector<InstalledApp> apps);
    ContentView& open(AppLibrary::Phase phase, std::vector<InstalledApp> apps);
    void close() { window.reset(); }
    // As the scan publishes them.
    void publish(std::vector<InstalledApp> apps) { library.apps = std::move(apps); }
    // Lets the window draw what has changed. Jobs of the pools stay where they are.
    void turn();
    // The same, and all jobs run.
    void finish();

    TableView& table() const; // of the section that the window is in, or of the applications
    ApplicationsTable& applications() const;
    ApplicationsDetail& detail() const;
    int namingColumn = 0; // which names a row
    // By the name in that column; the test fails when there is none.
    int rowOf(const QString& name) const;
    QStringList names() const; // of all rows, from the top
    QStringList selectedNames() const;
    QString cell(int row, int column) const;
    QVariant cellData(int row, int column, int role) const;
    void click(const QString& name, Qt::KeyboardModifiers modifiers = {}) const;
    void doubleClick(const QString& name) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const; // into what has the focus
    void clickHeader(int column) const;
    // Two clicks on a header put the rows in both orders of their `key`, equal ones as they stand in `records`.
    // `name` is what the column `nameColumn` shows of a record, and of no other.
    template <class Record, class Key, class Name>
    void expectOrderOfHeader(int column, const std::vector<Record>& records, Key key, int nameColumn,
                             Name name);

    TemporaryFolder disk;
    StepTaskRunner runner;
    ManualClock clock{runner};
    PosixFileSystem files{disk.path(), FileURL("/Users/alex")};
    ScriptedCommandRunner commands;
    FakeMetadata metadata;
    FakeWorkspace workspace;
    FakePreviews previews;
    FakePreviewPanel systemPanel; // there is none at first
    RemovalFakes fakes;
    FakeMenuBarExtra extra{runner}; // on a desktop with a panel
    Platform platform{.files = files,
                      .commands = commands,
                      .metadata = metadata,
                      .clock = clock,
                      .tasks = runner,
                      .workspace = workspace,
                      .trash = fakes.trash,
                      .runningApplications = fakes.running,
                      .defaults = fakes.defaults,
                      .previews = previews,
                      .menuBarExtra = extra,
                      .previewPanel = systemPanel};
    Welcomed welcomed{fakes.defaults};
    AppLibrary library{platform};
    NotificationCenter notifications;
    LibrarySection startsIn = LibrarySection::applications; // where open() goes
    std::unique_ptr<ContentView> window;
};

template <class Record, class Key, class Name>
void WindowTest::expectOrderOfHeader(int column, const std::vector<Record>& records, Key key, int nameColumn,
                                     Name name) {
    std::vector<Qt::SortOrder> seen;
    for (int i = 0; i < 2; ++i) {
        clickHeader(column);
        turn();
        EXPECT_EQ(table().header()->sortIndicatorSection(), column);
        seen.push_back(table().header()->sortIndicatorOrder());
        auto sorted = records;
        std::stable_sort(sorted.begin(), sorted.end(), [&](const Record& a, const Record& b) {
            return seen.back() == Qt::AscendingOrder ? key(a) < key(b) : key(b) < key(a);
        });
        QStringList expected;
        QStringList shown;
        for (std::size_t row = 0; row < sorted.size(); ++row) {
            expected << QString::fromStdString(name(sorted[row]));
            shown << cell(static_cast<int>(row), nameColumn);
        }
        EXPECT_EQ(shown, expected) << "column " << column;
    }
    EXPECT_NE(seen.front(), seen.back());
}

} // namespace quillane
