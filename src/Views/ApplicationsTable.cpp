#include "ApplicationsTable.h"
#include "AppActions.h"
#include "AppLibrary.h"
#include "AppTableModel.h"
#include "ContentState.h"
#include "IconCache.h"
#include "LibraryObserver.h"
#include "StatusLine.h"
#include "TableView.h"
#include "Workspace.h"
#include <QHeaderView>
#include <QMenu>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QVBoxLayout>
#include <unordered_set>

namespace quillane {

ApplicationsTable::ApplicationsTable(AppLibrary& library, ContentState& state, QWidget* parent)
    : QWidget(parent)
    , m_library(library)
    , m_state(state)
    , m_model(new AppTableModel(library.platform().clock, this))
    , m_table(new TableView(QStringLiteral("Applications")))
    , m_statusLine(new StatusLine)
    , m_rows(new LibraryObserver([this] { render(); }, this))
    , m_icons(new LibraryObserver(
          [this] {
              IconCache::shared().latestArrival.get();
              m_model->iconsArrived();
          },
          this)) {
    m_table->setModel(m_model);
    m_table->setColumns({{.width = 180, .stretches = true},
                         {.width = 88},
                         {.width = 112},
                         {.width = 132},
                         {.width = 90, .narrowest = 60, .narrowRank = 3}});

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_table, 1);
    column->addWidget(m_statusLine);
    setFocusProxy(m_table);

    showSortOrder();
    m_table->setSortingEnabled(true);
    connect(m_model, &AppTableModel::orderWanted, this, &ApplicationsTable::changeSortOrder);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ApplicationsTable::takeOverSelection);
    connect(m_table, &QAbstractItemView::doubleClicked, this, &ApplicationsTable::openSelected);
    connect(m_table, &TableView::menuWanted, this, &ApplicationsTable::openMenu);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const enter = new QShortcut(key, m_table, nullptr, nullptr, Qt::WidgetShortcut);
        connect(enter, &QShortcut::activated, this, &ApplicationsTable::openSelected);
    }
    m_rows->renderNow();
    m_icons->renderNow();
}

ApplicationsTable::~ApplicationsTable() = default;

void ApplicationsTable::render() {
    const QScopedValueRollback rendering(m_isRendering, true);
    const auto apps = m_library.visibleApps();
    m_model->setApps(sorted(apps, m_state.sortOrder.get()), m_library.protectedPaths.get());
    restoreSelection();
    const auto phase = m_library.phase.get();
    const bool isReady = phase.kind == AppLibrary::Phase::Kind::ready;
    m_statusLine->show(phase, apps.size(), isReady ? m_library.totalVisibleBytes() : 0);
}

void ApplicationsTable::restoreSelection() {
    const auto& wanted = m_state.selection.get();
    auto* const selection = m_table->selectionModel();
    QItemSelection missing;
    for (const FileURL& url : wanted) {
        const auto row = m_model->rowOf(url);
        if (row && !selection->isRowSelected(*row)) {
            missing.select(m_model->index(*row, 0), m_model->index(*row, AppTableModel::kColumnCount - 1));
        }
    }
    if (!missing.isEmpty()) {
        selection->select(missing, QItemSelectionModel::Select);
    }
}

void ApplicationsTable::takeOverSelection() {
    if (m_isRendering) {
        return;
    }
    std::unordered_set<FileURL> urls;
    for (const auto& index : m_table->selectionModel()->selectedRows()) {
        urls.insert(m_model->keyAt(index.row()));
    }
    m_state.selection = std::move(urls);
}

void ApplicationsTable::showSortOrder() {
    const AppComparator& first = m_state.sortOrder.get().front();
    for (int column = 0; column < AppTableModel::kColumnCount; ++column) {
        if (AppTableModel::sortKey(static_cast<AppTableModel::Column>(column)) == first.key) {
            m_table->header()->setSortIndicator(column,
                                                first.isReverse ? Qt::DescendingOrder : Qt::AscendingOrder);
        }
    }
}

void ApplicationsTable::changeSortOrder(const AppComparator& comparator) {
    m_state.sortOrder = {comparator};
}

void ApplicationsTable::openMenu(bool forRows, const QPoint& globalPosition) {
    std::vector<InstalledApp> apps;
    for (int row = 0; forRows && row < m_model->rowCount(); ++row) {
        if (m_table->selectionModel()->isRowSelected(row)) {
            if (auto app = m_library.appWithID(m_model->keyAt(row))) {
                apps.push_back(*std::move(app));
            }
        }
    }
    auto* const menu = AppActions::makeMenu(
        m_library, apps, [this](BulkRemoval removal) { m_state.removal = std::move(removal); }, m_table);
    menu->popup(globalPosition);
}

void ApplicationsTable::openSelected() {
    const auto& selection = m_state.selection.get();
    if (selection.size() == 1 && m_model->rowOf(*selection.begin())) {
        m_library.platform().workspace.open(*selection.begin());
    }
}

} // namespace quillane
