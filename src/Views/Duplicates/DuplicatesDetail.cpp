#include "Duplicates/DuplicatesDetail.h"
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Duplicates/Copies.h"
#include "Duplicates/DuplicateDetailView.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "Panes/SelectedRecords.h"
#include "State/ContentState.h"
#include <algorithm>

namespace quillane {

DuplicatesDetail::DuplicatesDetail(AppLibrary& library, ContentState& state, QWidget* parent)
    : SectionDetail(state, parent)
    , m_library(library)
    , m_state(state)
    , m_one(new DuplicateDetailView(library))
    , m_several(new BulkSummary) {
    connect(m_one, &DuplicateDetailView::lookWanted, this, &DuplicatesDetail::look);
    connect(m_one, &DuplicateDetailView::wentTo, this, &DuplicatesDetail::followTo);
    begin(new PanePlaceholder(words(symbol(LibrarySection::duplicates)), QStringLiteral("No Selection"),
                              QStringLiteral("Pick a group to choose which copy to keep.")),
          m_one, m_several);
}

std::vector<DuplicateGroup> DuplicatesDetail::selected() const {
    return selectedDuplicateGroups(m_library, *state().duplicateSelection);
}

std::size_t DuplicatesDetail::fill() {
    const auto groups = selected();
    const auto shownBefore = m_one->shownCopies();
    if (groups.size() == 1) {
        m_one->show(groups.front());
    } else {
        m_one->forget();
    }
    if (groups.size() > 1) {
        showSeveral(groups);
    }
    followWith(shownBefore);
    return groups.size();
}

void DuplicatesDetail::showSeveral(const std::vector<DuplicateGroup>& groups) {
    BulkSummary::Rows rows;
    for (const auto& group : groups) {
        rows.emplace_back(shownName(group.name()), group.wastedBytes());
    }
    m_several->show("group", rows,
                    QStringLiteral("Keeps the most recently opened copy of each and trashes the rest."),
                    Copies::anyCanGo(m_library, groups));
}

BulkRemoval DuplicatesDetail::removalForSelection() const {
    return m_library.removalForDuplicates(selected(), {});
}

// The button that opened it closes it again.
void DuplicatesDetail::look(const FileURL& copy) {
    m_state.quickLookURL = m_state.quickLookURL.peek() == copy ? std::nullopt : std::optional(copy);
}

// Who goes through the copies while one of them is looked at looks at the next.
void DuplicatesDetail::followTo(const FileURL& copy) {
    const auto& lookedAt = m_state.quickLookURL.peek();
    if (lookedAt && std::ranges::find(m_one->shownCopies(), *lookedAt) != m_one->shownCopies().end()) {
        m_state.quickLookURL = std::optional(copy);
    }
}

// A copy that is looked at and no longer shown gives way to the one that would stay, or to nothing.
void DuplicatesDetail::followWith(const std::vector<FileURL>& shownBefore) {
    const auto& lookedAt = m_state.quickLookURL.peek();
    const auto holds = [&](const std::vector<FileURL>& urls) {
        return std::ranges::find(urls, *lookedAt) != urls.end();
    };
    if (lookedAt && holds(shownBefore) && !holds(m_one->shownCopies())) {
        m_state.quickLookURL = m_one->chosen();
    }
}

} // namespace quillane
