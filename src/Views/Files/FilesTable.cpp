#include "Files/FilesTable.h"
#include "AppLibrary.h"
#include "Characters.h"
#include "Components/EmptyState.h"
#include "Components/ShownText.h"
#include "FileSystem.h"
#include "Files/FilesMenu.h"
#include "Files/LensBar.h"
#include "Formatting.h"
#include "State/ContentState.h"
#include <QMenu>
#include <QShowEvent>
#include <cstdint>
#include <utility>
#include <vector>

namespace quillane {

namespace {

constexpr int kEdge = TableView::kInset; // the widths are meant within the bars of the rows

QString nothingFound(FilesMode mode) {
    switch (mode) {
    case FilesMode::large:
        return QStringLiteral("No files over ") + words(Formatting::byteCount(UserFile::kLargeBytes)) +
               QStringLiteral(" in your folders.");
    case FilesMode::screenshots:
        return QStringLiteral("No screenshots found.");
    case FilesMode::installers:
        return QStringLiteral("No installers in Downloads or on the Desktop.");
    case FilesMode::search:
        return QStringLiteral("No matches.");
    }
    __builtin_unreachable();
}

QString photosWords(const std::optional<Bytes>& bytes) {
    const Bytes taken = bytes.value_or(0);
    return taken > 0 ? QStringLiteral("Photos library ") + words(Formatting::byteCount(taken)) +
                           QStringLiteral(", managed by Photos")
                     : QString();
}

} // namespace

FilesTable::FilesTable(AppLibrary& library, ContentState& state, QWidget* parent)
    : KeyedTable(QStringLiteral("Files"), new FilesTableModel(library.platform().clock),
                 {{.width = 180, .stretches = true},
                  {.width = 88},
                  {.width = 80},
                  {.width = 112},
                  {.width = 164 + kEdge, .narrowest = 112, .narrowRank = 2}},
                 new StatusRow, state.fileSelection, state.fileSortOrder, parent)
    , m_library(library)
    , m_state(state)
    , m_lensBar(new LensBar(library))
    , m_emptyState(new EmptyState({}, {}, {})) {
    putAbove(m_lensBar);
    table()->setEmptyState(m_emptyState);
    connect(table(), &TableView::spacePressed, this, &FilesTable::look);
    connect(table()->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FilesTable::followSelection);
    copyPathsOf([this] { return selectedKeys(); });
    drawWith([this] { renderRows(); });
    drawWith([this] { renderFooter(); });
    drawWith([this] { renderEmptiness(); });
    drawWith([this] {
        if (*m_library.areFilesStale) {
            m_library.loadFiles();
        }
    });
}

FilesTable::~FilesTable() = default;

// Nothing is looked for yet, whatever was found before.
bool FilesTable::isHintDue() const {
    return m_library.filesMode() == FilesMode::search && Text::trimmed(*m_library.fileSearchText).empty();
}

void FilesTable::renderRows() {
    const auto home = m_library.platform().files.home();
    std::vector<FileRecord> records;
    if (!isHintDue()) {
        records.reserve(m_library.files->size());
        for (const auto& file : *m_library.files) {
            records.push_back({&file, file.folder(home), m_library.isProtected(file.url)});
        }
    }
    showRows([&] { model().updateFrom(sorted(std::move(records), m_state.fileSortOrder.get(), m_names)); });
    leaveWhatHasGone();
}

// What is looked at and no longer listed gives way to what is selected, or to nothing.
void FilesTable::leaveWhatHasGone() {
    const auto& seen = m_state.quickLookURL.peek();
    if (seen && isVisible() && !model().rowOf(*seen)) {
        const auto urls = selectedKeys();
        m_state.quickLookURL = urls.empty() ? std::nullopt : std::optional(urls.front());
    }
}

void FilesTable::renderFooter() {
    const auto files = m_library.files->size();
    footer()->setVisible(files > 0 && !isHintDue());
    footer()->setTexts(words(Formatting::counted(static_cast<std::int64_t>(files), "file")),
                       photosWords(*m_library.photosLibraryBytes),
                       words(Formatting::byteCount(m_library.totalFileBytes())) + QStringLiteral(" total"));
}

void FilesTable::renderEmptiness() {
    if (isHintDue()) {
        m_emptyState->setContent(
            QStringLiteral("magnifyingglass"), QStringLiteral("Search your files"),
            QStringLiteral("Spotlight indexes what's written inside documents, so “invoice "
                           "2023” finds a PDF by its contents."));
    } else if (*m_library.isLoadingFiles) {
        m_emptyState->setLoading(QStringLiteral("Asking Spotlight…"));
    } else {
        m_emptyState->setContent(QStringLiteral("checkmark.circle"), QStringLiteral("Nothing Here"),
                                 nothingFound(m_library.filesMode()));
    }
}

void FilesTable::openMenu(const std::vector<FileURL>& urls, const QPoint& globalPosition) {
    const auto look = [&state = m_state](const FileURL& url) { state.quickLookURL = url; };
    if (auto* const menu = makeFilesMenu(m_library, urls, look, presentIn(m_state), table())) {
        menu->popup(globalPosition);
    }
}

// A window that comes back from the dock has not left the section.
void FilesTable::showEvent(QShowEvent* event) {
    KeyedTable::showEvent(event);
    if (!event->spontaneous() && m_library.files.peek().empty() && !m_library.isLoadingFiles.peek()) {
        m_library.loadFiles();
    }
}

// The key that opened the look closes it again.
void FilesTable::look() {
    const auto urls = selectedKeys();
    if (m_state.quickLookURL.peek()) {
        m_state.quickLookURL = std::optional<FileURL>();
    } else if (!urls.empty()) {
        m_state.quickLookURL = urls.front();
    }
}

// What is looked at goes with the selection.
void FilesTable::followSelection() {
    if (!m_state.quickLookURL.peek() || !isVisible()) {
        return;
    }
    if (const auto urls = selectedKeys(); !urls.empty()) {
        m_state.quickLookURL = urls.front();
    }
}

} // namespace quillane
