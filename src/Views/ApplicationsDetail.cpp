#include "ApplicationsDetail.h"
#include "AppActions.h"
#include "AppDetailView.h"
#include "AppLibrary.h"
#include "ContentState.h"
#include "LibraryObserver.h"
#include "MultiSelectionSummary.h"
#include "PanePlaceholder.h"
#include "ShownText.h"
#include <algorithm>

namespace quillane {

ApplicationsDetail::ApplicationsDetail(AppLibrary& library, ContentState& state, QWidget* parent)
    : QStackedWidget(parent)
    , m_library(library)
    , m_state(state)
    , m_none(new PanePlaceholder(words(symbol(LibrarySection::applications)),
                                 QStringLiteral("No App Selected"),
                                 QStringLiteral("Pick an app to see its full disk footprint.")))
    , m_one(new AppDetailView(library))
    , m_several(new MultiSelectionSummary)
    , m_observer(new LibraryObserver([this] { render(); }, this)) {
    addWidget(m_none);
    addWidget(m_one);
    addWidget(m_several);
    connect(m_one, &AppDetailView::removalWanted, this,
            [this](const BulkRemoval& removal) { m_state.removal = removal; });
    connect(m_several, &SelectionSummary::removeWanted, this,
            [this] { m_state.removal = m_library.removalForApps(selectedApps()); });
    m_observer->renderNow();
}

void ApplicationsDetail::render() {
    const auto apps = selectedApps();
    if (apps.empty()) {
        setCurrentWidget(m_none);
    } else if (apps.size() == 1) {
        m_one->show(apps.front());
        setCurrentWidget(m_one);
    } else {
        m_several->show(apps, !AppActions::removable(m_library, apps).empty());
        setCurrentWidget(m_several);
    }
}

std::vector<InstalledApp> ApplicationsDetail::selectedApps() const {
    const auto& selection = m_state.selection.get();
    std::vector<InstalledApp> selected;
    std::unordered_set<FileURL> seen; // the first application at a location is the one that counts
    for (const auto& app : m_library.apps.get()) {
        if (selection.contains(app.url) && seen.insert(app.url).second) {
            selected.push_back(app);
        }
    }
    return selected;
}

} // namespace quillane
