#include "ApplicationsTable.h"
#include "AppActions.h"
#include "AppLibrary.h"
#include "ContentState.h"
#include "IconCache.h"
#include "RecordsWithKeys.h"
#include "StatusLine.h"
#include "Workspace.h"
#include <QShortcut>

namespace quillane {

ApplicationsTable::ApplicationsTable(AppLibrary& library, ContentState& state, QWidget* parent)
    : ApplicationsTable(library, state, new StatusLine, parent) {}

ApplicationsTable::ApplicationsTable(AppLibrary& library, ContentState& state, StatusLine* statusLine,
                                     QWidget* parent)
    : KeyedTable(QStringLiteral("Applications"), new AppTableModel(library.platform().clock),
                 {{.width = 180, .stretches = true},
                  {.width = 88},
                  {.width = 112},
                  {.width = 132},
                  {.width = 90, .narrowest = 60, .narrowRank = 3}},
                 statusLine, state.selection, state.sortOrder, parent)
    , m_library(library)
    , m_state(state)
    , m_statusLine(statusLine) {
    connect(table(), &QAbstractItemView::doubleClicked, this, &ApplicationsTable::openSelected);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const enter = new QShortcut(key, table(), nullptr, nullptr, Qt::WidgetShortcut);
        connect(enter, &QShortcut::activated, this, &ApplicationsTable::openSelected);
    }
    drawWith([this] { render(); });
    drawWith([this] {
        IconCache::shared().latestArrival.get();
        model().iconsArrived();
    });
}

ApplicationsTable::~ApplicationsTable() = default;

void ApplicationsTable::render() {
    const auto apps = m_library.visibleApps();
    showRows([&] { model().setApps(sorted(apps, m_state.sortOrder.get()), m_library.protectedPaths.get()); });
    const auto phase = m_library.phase.get();
    const bool isReady = phase.kind == AppLibrary::Phase::Kind::ready;
    m_statusLine->show(phase, apps.size(), isReady ? m_library.totalVisibleBytes() : 0);
}

void ApplicationsTable::openMenu(const std::vector<FileURL>& urls, const QPoint& globalPosition) {
    const auto apps = recordsWithKeys(m_library.apps.get(), &InstalledApp::url, urls);
    AppActions::makeMenu(m_library, apps, presentIn(m_state), table())->popup(globalPosition);
}

void ApplicationsTable::openSelected() {
    const auto& selection = m_state.selection.get();
    if (selection.size() == 1 && model().rowOf(*selection.begin())) {
        m_library.platform().workspace.open(*selection.begin());
    }
}

} // namespace quillane
