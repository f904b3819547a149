#include "Orphans/OrphanTable.h"
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include "Orphans/OrphansMenu.h"
#include "State/ContentState.h"
#include <QMenu>
#include <cstdint>
#include <utility>

namespace quillane {

namespace {
constexpr int kEdge = TableView::kInset; // the widths are meant within the bars of the rows
} // namespace

OrphanTable::OrphanTable(AppLibrary& library, ContentState& state, QWidget* parent)
    : KeyedTable(QStringLiteral("Orphaned Files"), new OrphanTableModel(library.platform().clock),
                 {{.width = kEdge + 200, .stretches = true, .widest = kEdge + 280},
                  {.width = 90},
                  {.width = 62},
                  {.width = 130}},
                 new StatusRow, state.orphanSelection, state.orphanSortOrder, parent)
    , m_library(library)
    , m_state(state) {
    setEmptyWords({words(symbol(LibrarySection::orphans)), QStringLiteral("No Orphaned Files"),
                   QStringLiteral("Quillane found nothing that a removed app left behind."),
                   QStringLiteral("Looking for orphaned files…")});
    drawWith([this] { renderRows(); });
    drawWith([this] { renderFooter(); });
    drawWith([this] {
        explainEmptiness(m_library, AppLibrary::Phase::Kind::findingOrphans, m_library.orphans->empty());
    });
}

OrphanTable::~OrphanTable() = default;

void OrphanTable::renderRows() {
    std::vector<OrphanRow> rows;
    m_library.forEachVisibleOrphanGroup(
        [&rows](const OrphanGroupView& group) { rows.push_back(OrphanRow::of(group)); });
    showRows([&] { model().update(sorted(std::move(rows), m_state.orphanSortOrder.get(), m_names)); });
}

void OrphanTable::renderFooter() {
    const auto groups = m_library.badge(LibrarySection::orphans);
    footer()->setTexts(words(Formatting::counted(groups, "dead app")), {},
                       words(Formatting::byteCount(m_library.totalOrphanBytes())) +
                           QStringLiteral(" reclaimable"));
}

void OrphanTable::openMenu(const std::vector<std::string>& vendors, const QPoint& globalPosition) {
    if (auto* const menu = makeOrphansMenu(m_library, vendors, presentIn(m_state), table())) {
        menu->popup(globalPosition);
    }
}

} // namespace quillane
