#include "Duplicates/DuplicatesTable.h"
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Duplicates/Copies.h"
#include "Duplicates/DuplicatesMenu.h"
#include "Formatting.h"
#include "State/ContentState.h"
#include "Tables/RecordsWithKeys.h"
#include <QMenu>
#include <QShowEvent>
#include <cstdint>
#include <utility>
#include <vector>

namespace quillane {

namespace {

constexpr int kEdge = TableView::kInset; // the last width is meant within the bars of the rows

const QString kComparing = QStringLiteral("Comparing files…");

QString sentence() {
    return QStringLiteral("No files over ") + words(Formatting::byteCount(DuplicateGroup::kLeastBytes)) +
           QStringLiteral(" share their contents with another.");
}

} // namespace

DuplicatesTable::DuplicatesTable(AppLibrary& library, ContentState& state, QWidget* parent)
    : KeyedTable(QStringLiteral("Duplicates"), new DuplicatesTableModel,
                 {{.width = 180, .stretches = true}, {.width = 76}, {.width = 96}, {.width = 104 + kEdge}},
                 new StatusRow, state.duplicateSelection, state.duplicateSortOrder, parent)
    , m_library(library)
    , m_state(state) {
    setEmptyWords(
        {QStringLiteral("checkmark.circle"), QStringLiteral("No Duplicates"), sentence(), kComparing});
    copyPathsOf([this] {
        return Copies::urlsOf(recordsWithKeys(*m_library.duplicates, &DuplicateGroup::id, selectedKeys()));
    });
    drawWith([this] { renderRows(); });
    drawWith([this] { renderFooter(); });
    drawWith([this] { renderEmptiness(); });
    drawWith([this] {
        if (*m_library.areDuplicatesStale) {
            m_library.loadDuplicates();
        }
    });
}

DuplicatesTable::~DuplicatesTable() = default;

void DuplicatesTable::renderRows() {
    std::vector<DuplicateRecord> records;
    m_library.forEachVisibleDuplicate([&](const DuplicateGroup& group) { records.push_back({&group}); });
    showRows(
        [&] { model().updateFrom(sorted(std::move(records), m_state.duplicateSortOrder.get(), m_names)); });
}

// Of all groups: what the search hides wastes as much.
void DuplicatesTable::renderFooter() {
    const auto groups = m_library.duplicates->size();
    footer()->setVisible(groups > 0);
    footer()->setTexts(words(Formatting::counted(static_cast<std::int64_t>(groups), "group")), {},
                       words(Formatting::byteCount(m_library.totalWastedBytes())) +
                           QStringLiteral(" recoverable by keeping one of each"));
}

void DuplicatesTable::renderEmptiness() {
    std::optional<QString> looking;
    if (*m_library.isLoadingDuplicates) {
        const auto& status = *m_library.duplicateStatus;
        looking = status && !status->empty() ? words(*status) : kComparing;
    }
    explainEmptiness(looking, m_library.duplicates->empty());
}

void DuplicatesTable::openMenu(const std::vector<std::string>& ids, const QPoint& globalPosition) {
    if (auto* const menu = makeDuplicatesMenu(m_library, ids, presentIn(m_state), table())) {
        menu->popup(globalPosition);
    }
}

// A window that comes back from the dock has not left the section.
void DuplicatesTable::showEvent(QShowEvent* event) {
    KeyedTable::showEvent(event);
    if (!event->spontaneous() && m_library.duplicates.peek().empty() &&
        !m_library.isLoadingDuplicates.peek()) {
        m_library.loadDuplicates();
    }
}

} // namespace quillane
