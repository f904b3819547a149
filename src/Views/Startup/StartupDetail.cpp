#include "Startup/StartupDetail.h"
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "Panes/SelectedRecords.h"
#include "Startup/StartupDetailView.h"
#include "State/ContentState.h"

namespace quillane {

StartupDetail::StartupDetail(AppLibrary& library, ContentState& state, QWidget* parent)
    : SectionDetail(state, parent)
    , m_library(library)
    , m_one(new StartupDetailView(library))
    , m_several(new BulkSummary) {
    begin(new PanePlaceholder(words(symbol(LibrarySection::startup)), QStringLiteral("No Selection"),
                              QStringLiteral("Pick an item to see what it runs and who installed it.")),
          m_one, m_several);
}

std::size_t StartupDetail::fill() {
    const auto items = selectedStartupItems(m_library, *state().startupSelection);
    if (items.size() == 1) {
        m_one->show(items.front());
    } else {
        m_one->forget();
    }
    if (items.size() > 1) {
        showSeveral(items);
    }
    return items.size();
}

void StartupDetail::showSeveral(const std::vector<StartupItem>& items) {
    BulkSummary::Rows rows;
    for (const auto& item : items) {
        rows.emplace_back(shownName(item.label), item.bytes);
    }
    m_several->show("startup item", rows,
                    QStringLiteral("Items outside your home folder need admin rights and are skipped."),
                    !m_library.removalForStartupItems(items).entries.empty());
}

BulkRemoval StartupDetail::removalForSelection() const {
    return m_library.removalForStartupItems(selectedStartupItems(m_library, *state().startupSelection));
}

} // namespace quillane
