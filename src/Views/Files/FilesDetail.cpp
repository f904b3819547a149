#include "Files/FilesDetail.h"
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Files/FileDetailView.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "Panes/SelectedRecords.h"
#include "State/ContentState.h"
#include <algorithm>

namespace quillane {

FilesDetail::FilesDetail(AppLibrary& library, ContentState& state, QWidget* parent)
    : SectionDetail(state, parent)
    , m_library(library)
    , m_one(new FileDetailView(library))
    , m_several(new BulkSummary) {
    // What opened the look closes it again.
    connect(m_one, &FileDetailView::lookWanted, this, [&state](const FileURL& file) {
        state.quickLookURL = state.quickLookURL.peek() == file ? std::nullopt : std::optional(file);
    });
    begin(new PanePlaceholder(words(symbol(LibrarySection::files)), QStringLiteral("No Selection"),
                              QStringLiteral("Pick a file to preview it. Space opens Quick Look.")),
          m_one, m_several);
}

std::size_t FilesDetail::fill() {
    const auto files = selectedFiles(m_library, *state().fileSelection);
    if (files.size() == 1) {
        m_one->show(files.front());
    } else {
        m_one->forget();
    }
    if (files.size() > 1) {
        showSeveral(files);
    }
    return files.size();
}

void FilesDetail::showSeveral(const std::vector<UserFile>& files) {
    BulkSummary::Rows rows;
    for (const auto& file : files) {
        rows.emplace_back(shownName(file.name()), file.bytes);
    }
    const bool anyCanGo =
        std::ranges::any_of(files, [this](const UserFile& file) { return !m_library.isProtected(file.url); });
    m_several->show("file", rows,
                    QStringLiteral("These are your own files. Nothing here can be regenerated."), anyCanGo);
}

BulkRemoval FilesDetail::removalForSelection() const {
    return m_library.removalForFiles(selectedFiles(m_library, *state().fileSelection));
}

} // namespace quillane
