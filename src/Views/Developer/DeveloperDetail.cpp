#include "Developer/DeveloperDetail.h"
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Developer/DeveloperDetailView.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "Panes/SelectedRecords.h"
#include "State/ContentState.h"
#include <algorithm>

namespace quillane {

DeveloperDetail::DeveloperDetail(AppLibrary& library, ContentState& state, QWidget* parent)
    : SectionDetail(state, parent)
    , m_library(library)
    , m_one(new DeveloperDetailView(library))
    , m_several(new BulkSummary) {
    begin(new PanePlaceholder(words(symbol(LibrarySection::developer)), QStringLiteral("No Selection"),
                              QStringLiteral("Pick a location to see what removing it would mean.")),
          m_one, m_several);
}

std::size_t DeveloperDetail::fill() {
    const auto items = selectedDeveloperItems(m_library, *state().developerSelection);
    if (items.size() == 1) {
        m_one->show(items.front());
    } else if (!items.empty()) {
        showSeveral(items);
    }
    return items.size();
}

void DeveloperDetail::showSeveral(const std::vector<DevCacheItem>& items) {
    BulkSummary::Rows rows;
    for (const auto& item : items) { // several tools have a "Package cache"
        rows.emplace_back(shownName(item.tool + " - " + item.kind), item.bytes);
    }
    const bool anyCanGo = std::ranges::any_of(
        items, [this](const DevCacheItem& item) { return !m_library.isProtected(item.url); });
    m_several->show(
        "location", rows,
        QStringLiteral("Includes project dependencies. Those projects won't run until you reinstall them."),
        anyCanGo);
}

BulkRemoval DeveloperDetail::removalForSelection() const {
    return m_library.removalForDeveloperItems(selectedDeveloperItems(m_library, *state().developerSelection));
}

} // namespace quillane
