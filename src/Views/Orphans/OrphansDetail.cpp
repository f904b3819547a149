#include "Orphans/OrphansDetail.h"
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Orphans/OrphanDetailView.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "Panes/SelectedRecords.h"
#include "State/ContentState.h"
#include <algorithm>

namespace quillane {

OrphansDetail::OrphansDetail(AppLibrary& library, ContentState& state, QWidget* parent)
    : SectionDetail(state, parent)
    , m_library(library)
    , m_one(new OrphanDetailView(library))
    , m_several(new BulkSummary) {
    begin(new PanePlaceholder(words(symbol(LibrarySection::orphans)), QStringLiteral("No Selection"),
                              QStringLiteral("Pick a dead app to see what it left behind.")),
          m_one, m_several);
}

std::size_t OrphansDetail::fill() {
    const auto groups = selectedOrphanGroups(m_library, *state().orphanSelection);
    if (groups.size() == 1) {
        m_one->show(groups.front());
    } else if (!groups.empty()) {
        showSeveral(groups);
    }
    return groups.size();
}

void OrphansDetail::showSeveral(const std::vector<OrphanGroup>& groups) {
    BulkSummary::Rows rows;
    for (const auto& group : groups) {
        rows.emplace_back(shownName(group.title()), group.totalBytes());
    }
    const bool anyCanGo = std::ranges::any_of(
        groups, [this](const OrphanGroup& group) { return !m_library.sweepableItems(group).empty(); });
    m_several->show("dead app", rows, std::nullopt, anyCanGo);
}

BulkRemoval OrphansDetail::removalForSelection() const {
    return m_library.removalForOrphanGroups(selectedOrphanGroups(m_library, *state().orphanSelection));
}

} // namespace quillane
