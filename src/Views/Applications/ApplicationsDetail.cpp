#include "Applications/ApplicationsDetail.h"
#include "AppLibrary.h"
#include "Applications/AppActions.h"
#include "Applications/AppDetailView.h"
#include "Applications/MultiSelectionSummary.h"
#include "Components/ShownText.h"
#include "Panes/PanePlaceholder.h"
#include "Panes/SelectedRecords.h"
#include "State/ContentState.h"

namespace quillane {

ApplicationsDetail::ApplicationsDetail(AppLibrary& library, ContentState& state, QWidget* parent)
    : SectionDetail(state, parent)
    , m_library(library)
    , m_one(new AppDetailView(library))
    , m_several(new MultiSelectionSummary) {
    begin(new PanePlaceholder(words(symbol(LibrarySection::applications)), QStringLiteral("No App Selected"),
                              QStringLiteral("Pick an app to see its full disk footprint.")),
          m_one, m_several);
}

std::size_t ApplicationsDetail::fill() {
    const auto apps = selectedApps(m_library, *state().selection);
    if (apps.size() == 1) {
        m_one->show(apps.front());
    } else if (!apps.empty()) {
        m_several->show(apps, !AppActions::removable(m_library, apps).empty());
    }
    return apps.size();
}

BulkRemoval ApplicationsDetail::removalForSelection() const {
    return m_library.removalForApps(selectedApps(m_library, *state().selection));
}

} // namespace quillane
