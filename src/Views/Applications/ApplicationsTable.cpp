#include "Applications/ApplicationsTable.h"
#include "AppLibrary.h"
#include "Applications/AppActions.h"
#include "Applications/AppRow.h"
#include "Applications/StatusLine.h"
#include "Components/ShownText.h"
#include "IconCache.h"
#include "State/ContentState.h"
#include "Tables/RecordsWithKeys.h"
#include "Workspace.h"
#include <QShortcut>
#include <utility>
#include <vector>

namespace quillane {

ApplicationsTable::ApplicationsTable(AppLibrary& library, ContentState& state, QWidget* parent)
    : KeyedTable(QStringLiteral("Applications"), new ApplicationsTableModel(library.platform().clock),
                 {{.width = 180, .stretches = true},
                  {.width = 88},
                  {.width = 112},
                  {.width = 132},
                  {.width = 90, .narrowest = 60, .narrowRank = 3}},
                 new StatusLine, state.selection, state.sortOrder, parent)
    , m_library(library)
    , m_state(state) {
    connect(table(), &QAbstractItemView::doubleClicked, this, &ApplicationsTable::openSelected);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const enter = new QShortcut(key, table(), nullptr, nullptr, Qt::WidgetShortcut);
        connect(enter, &QShortcut::activated, this, &ApplicationsTable::openSelected);
    }
    setEmptyWords({words(symbol(LibrarySection::applications)), QStringLiteral("No Applications"),
                   QStringLiteral("Quillane found no app that can be removed."),
                   QStringLiteral("Finding applications…")});
    drawWith([this] { render(); });
    drawWith([this] {
        explainEmptiness(m_library, AppLibrary::Phase::Kind::scanning, !m_library.hasFilteredApps());
    });
    drawWith([this] {
        IconCache::shared().latestArrival.get();
        model().iconsArrived();
    });
}

ApplicationsTable::~ApplicationsTable() = default;

StatusLine* ApplicationsTable::statusLine() const {
    return static_cast<StatusLine*>(footer());
}

void ApplicationsTable::render() {
    std::vector<AppRecord> records;
    m_library.forEachVisibleApp(
        [&](const InstalledApp& app) { records.push_back({&app, m_library.isProtected(app.url)}); });
    const auto phase = m_library.phase.get();
    const bool isReady = phase.kind == AppLibrary::Phase::Kind::ready;
    const auto bytesOf = [](const AppRecord& record) { return record.app->totalBytes(); };
    statusLine()->show(phase, records.size(), isReady ? sumOfBytes(records, bytesOf) : 0);
    showRows([&] { model().updateFrom(sorted(std::move(records), m_state.sortOrder.get(), m_names)); });
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
