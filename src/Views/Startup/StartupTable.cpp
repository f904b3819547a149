#include "Startup/StartupTable.h"
#include "AppLibrary.h"
#include "Components/Label.h"
#include "Components/ShownText.h"
#include "Components/SymbolView.h"
#include "FileSystem.h"
#include "Formatting.h"
#include "Startup/StartupMenu.h"
#include "State/ContentState.h"
#include <QMenu>
#include <QShowEvent>
#include <cstdint>
#include <utility>
#include <vector>

namespace quillane {

namespace {

constexpr int kEdge = TableView::kInset; // the widths are meant within the bars of the rows
constexpr int kMark = 15;

const QString kReading = QStringLiteral("Reading launchd…");

} // namespace

StartupTable::StartupTable(AppLibrary& library, ContentState& state, QWidget* parent)
    : KeyedTable(QStringLiteral("Startup"), new StartupTableModel,
                 {{.width = kEdge + 86},
                  {.width = 180, .stretches = true},
                  {.width = 114, .narrowest = 76, .narrowRank = 1},
                  {.width = 124, .narrowest = 84, .narrowRank = 5},
                  {.width = 134, .narrowest = 80, .narrowRank = 6},
                  {.width = 60 + kEdge, .narrowest = 54, .narrowRank = 7}},
                 new StatusRow, state.startupSelection, state.startupSortOrder, parent)
    , m_library(library)
    , m_state(state)
    , m_problemMark(new SymbolView(QStringLiteral("exclamationmark.triangle.fill"), kMark, Tint::Orange)) {
    setEmptyWords({QStringLiteral("checkmark.circle"), QStringLiteral("No Startup Items"),
                   QStringLiteral("No third-party launch agents, daemons or helpers were found."), kReading});
    footer()->addBeforeRight(m_problemMark);
    footer()->right()->setTint(Tint::Orange);
    table()->setTypeAheadColumn(StartupTableModel::kLabel);
    copyPathsOf([this] { return selectedKeys(); });
    drawWith([this] { renderRows(); });
    drawWith([this] { renderFooter(); });
    drawWith([this] { renderEmptiness(); });
    drawWith([this] {
        if (*m_library.areStartupItemsStale) {
            m_library.loadStartupItems();
        }
    });
}

StartupTable::~StartupTable() = default;

void StartupTable::renderRows() {
    const auto home = m_library.platform().files.home();
    std::vector<StartupRecord> records;
    m_library.forEachVisibleStartupItem([&](const StartupItem& item) {
        records.push_back({&item, item.isAtHome(home), m_library.isProtected(item.url)});
    });
    showRows([&] { model().updateFrom(sorted(std::move(records), m_state.startupSortOrder.get())); });
}

// Of all items, whatever the search hides.
void StartupTable::renderFooter() {
    const auto items = static_cast<std::int64_t>(m_library.startupItems->size());
    const int problems = m_library.startupProblemCount();
    footer()->setVisible(items > 0);
    footer()->setTexts(words(Formatting::counted(items, "item")), {},
                       problems > 0 ? words(Formatting::counted(problems, "problem")) : QString());
    m_problemMark->setVisible(problems > 0);
}

void StartupTable::renderEmptiness() {
    explainEmptiness(*m_library.isLoadingStartup ? std::optional(kReading) : std::nullopt,
                     m_library.startupItems->empty());
}

void StartupTable::openMenu(const std::vector<FileURL>& urls, const QPoint& globalPosition) {
    if (auto* const menu = makeStartupMenu(m_library, urls, presentIn(m_state), table())) {
        menu->popup(globalPosition);
    }
}

// A window that comes back from the dock has not left the section.
void StartupTable::showEvent(QShowEvent* event) {
    KeyedTable::showEvent(event);
    if (!event->spontaneous() && m_library.startupItems.peek().empty() &&
        !m_library.isLoadingStartup.peek()) {
        m_library.loadStartupItems();
    }
}

} // namespace quillane
