#include "Applications/ApplicationsDetail.h"
#include "Applications/ApplicationsTable.h"
#include "Tables/SectionTable.h"
#include "Tables/TableView.h"
#include "WindowTest.h"
#include <QHeaderView>
#include <algorithm>

namespace quillane {

WindowTest::WindowTest() {
    IconCache::shared().attach(&platform);
}

WindowTest::~WindowTest() {
    window.reset();
    IconCache::shared().attach(nullptr);
}

ContentView& WindowTest::openReady(std::vector<InstalledApp> apps) {
    return open({AppLibrary::Phase::Kind::ready}, std::move(apps));
}

ContentView& WindowTest::open(AppLibrary::Phase phase, std::vector<InstalledApp> apps) {
    library.phase = phase;
    library.apps = std::move(apps);
    window = std::make_unique<ContentView>(library, notifications);
    window->showSection(startsIn);
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    turn();
    window->content(startsIn)->setFocus();
    return *window;
}

void WindowTest::turn() {
    for (int i = 0; i < 3; ++i) { // what is drawn may ask for another turn: icons, layouts
        runner.settle();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

void WindowTest::finish() {
    for (int i = 0; i < 3; ++i) {
        runner.runAll();
        turn();
    }
}

ApplicationsTable& WindowTest::applications() const {
    return *qobject_cast<ApplicationsTable*>(window->content(LibrarySection::applications));
}

ApplicationsDetail& WindowTest::detail() const {
    return *qobject_cast<ApplicationsDetail*>(window->detail(LibrarySection::applications));
}

TableView& WindowTest::table() const {
    auto* const section = qobject_cast<SectionTable*>(window->content(window->state().section.get()));
    return *(section ? section : &applications())->table();
}

QStringList WindowTest::names() const {
    QStringList all;
    for (int row = 0; row < table().model()->rowCount(); ++row) {
        all << cell(row, namingColumn);
    }
    return all;
}

QStringList WindowTest::selectedNames() const {
    QStringList selected;
    for (int row = 0; row < table().model()->rowCount(); ++row) {
        if (table().selectionModel()->isRowSelected(row)) {
            selected << cell(row, namingColumn);
        }
    }
    return selected;
}

QString WindowTest::cell(int row, int column) const {
    return cellData(row, column, Qt::DisplayRole).toString();
}

QVariant WindowTest::cellData(int row, int column, int role) const {
    return table().model()->index(row, column).data(role);
}

int WindowTest::rowOf(const QString& name) const {
    const auto row = names().indexOf(name);
    EXPECT_GE(row, 0) << "no row " << name.toStdString();
    return static_cast<int>(row);
}

void WindowTest::click(const QString& name, Qt::KeyboardModifiers modifiers) const {
    const QModelIndex index = table().model()->index(rowOf(name), 0);
    table().scrollTo(index);
    QTest::mouseClick(table().viewport(), Qt::LeftButton, modifiers, table().visualRect(index).center());
}

void WindowTest::doubleClick(const QString& name) const {
    const QPoint at = table().visualRect(table().model()->index(rowOf(name), 0)).center();
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, at);
}

void WindowTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

void WindowTest::clickHeader(int column) const {
    const auto* const header = table().header();
    const QPoint at(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                    header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
}

} // namespace quillane
