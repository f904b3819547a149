#include "Developer/DeveloperTable.h"
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Developer/DeveloperMenu.h"
#include "Formatting.h"
#include "State/ContentState.h"
#include <QMenu>
#include <cstdint>
#include <utility>
#include <vector>

namespace quillane {

namespace {
// The widths are meant within the bars of the rows. In a narrow window Last Touched gives that up, then Tool.
constexpr int kEdge = TableView::kInset;
} // namespace

DeveloperTable::DeveloperTable(AppLibrary& library, ContentState& state, QWidget* parent)
    : KeyedTable(QStringLiteral("Developer"), new DeveloperTableModel(library.platform().clock),
                 {{.width = kEdge + 140, .narrowest = 118, .narrowRank = 4},
                  {.width = 180, .stretches = true},
                  {.width = 84},
                  {.width = 78},
                  {.width = 112 + kEdge, .narrowest = 112, .narrowRank = 3}},
                 new StatusRow, state.developerSelection, state.developerSortOrder, parent)
    , m_library(library)
    , m_state(state) {
    setEmptyWords({words(symbol(LibrarySection::developer)), QStringLiteral("No Developer Caches"),
                   QStringLiteral("Quillane found nothing that a developer tool could make again."),
                   QStringLiteral("Measuring developer caches…")});
    drawWith([this] { renderRows(); });
    drawWith([this] { renderFooter(); });
    drawWith([this] {
        explainEmptiness(m_library, AppLibrary::Phase::Kind::findingDeveloperCaches,
                         m_library.developerCaches->empty());
    });
}

DeveloperTable::~DeveloperTable() = default;

void DeveloperTable::renderRows() {
    std::vector<DeveloperRecord> records;
    m_library.forEachVisibleDeveloperCache(
        [&](const DevCacheItem& item) { records.push_back({&item, m_library.isProtected(item.url)}); });
    showRows(
        [&] { model().updateFrom(sorted(std::move(records), m_state.developerSortOrder.get(), m_names)); });
}

void DeveloperTable::renderFooter() {
    const auto locations = m_library.developerCaches->size();
    footer()->setTexts(words(Formatting::counted(static_cast<std::int64_t>(locations), "location")),
                       words(Formatting::byteCount(m_library.totalDeveloperBytes())),
                       words(Formatting::byteCount(m_library.bytes(SweepCategory::developer))) +
                           QStringLiteral(" in sweep"));
}

void DeveloperTable::openMenu(const std::vector<FileURL>& urls, const QPoint& globalPosition) {
    if (auto* const menu = makeDeveloperMenu(m_library, urls, presentIn(m_state), table())) {
        menu->popup(globalPosition);
    }
}

} // namespace quillane
