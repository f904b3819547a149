#include "Duplicates/DuplicateDetailView.h"
#include "AppLibrary.h"
#include "Clock.h"
#include "Components/DetailHeader.h"
#include "Components/Panel.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Components/StatGrid.h"
#include "Components/Tile.h"
#include "Duplicates/Copies.h"
#include "FileSystem.h"
#include "Formatting.h"
#include "Panes/SelectedRecords.h"
#include "Workspace.h"
#include <QVBoxLayout>
#include <cstdint>
#include <unordered_map>

namespace quillane {

namespace {

constexpr int kTileSide = 48;

QString number(std::size_t count) {
    return words(Formatting::number(static_cast<std::int64_t>(count)));
}

QString subtitleOf(const DuplicateGroup& group) {
    return number(group.count()) + QStringLiteral(" identical copies • ") +
           words(Formatting::byteCount(group.bytesEach)) + QStringLiteral(" each");
}

QString removeLabelOf(const DuplicateGroup& group) {
    const auto others = group.count() - (group.files.empty() ? 0 : 1);
    return QStringLiteral("Keep Selected, Trash %1 Others…").arg(number(others));
}

} // namespace

DuplicateDetailView::DuplicateDetailView(AppLibrary& library, QWidget* parent)
    : DetailPane({}, QStringLiteral("Details of the copies"), parent, RemoveButton::AmongBlocks)
    , m_library(library)
    , m_header(new DetailHeader(new Tile(QStringLiteral("doc.on.doc.fill"), Tint::Files, kTileSide), {}))
    , m_copies(new CopiesList(QStringLiteral("Choose the copy to keep")))
    , m_copiesPanel(new Panel(QStringLiteral("Choose the copy to keep"), m_copies))
    , m_stats(new StatGrid) {
    m_copiesPanel->setOverhang(CopiesList::kOverhang);
    blocks()->addWidget(m_header);
    blocks()->addWidget(m_copiesPanel);
    blocks()->addWidget(new Panel(std::nullopt, m_stats));
    blocks()->addWidget(removeButton());
    setTabOrder(m_copies, removeButton());
    connect(m_copies, &CopiesList::chosen, this, &DuplicateDetailView::choose);
    connect(m_copies, &CopiesList::lookWanted, this, &DuplicateDetailView::lookWanted);
    connect(m_copies, &CopiesList::wentTo, this, &DuplicateDetailView::wentTo);
}

void DuplicateDetailView::show(const DuplicateGroup& group) {
    const bool isAnother = m_id != group.id;
    if (isAnother) {
        forget();
        scrollToTop();
    }
    m_id = group.id;
    m_chosen = Copies::chosenOf(group, m_keeper);
    m_shown = Copies::urlsOf({group});
    m_header->setTexts(shownName(group.name()), subtitleOf(group));
    m_copies->setRows(rowsOf(group));
    showStats(group);
    removeButton()->setLabel(removeLabelOf(group));
    removeButton()->setEnabled(Copies::anyCanGo(m_library, group, m_keeper));
}

void DuplicateDetailView::forget() {
    m_id.reset();
    m_keeper.reset();
    m_chosen.reset();
    m_shown.clear();
}

// Copies may lie in one folder, where only their names tell them apart.
std::vector<CopiesList::Row> DuplicateDetailView::rowsOf(const DuplicateGroup& group) const {
    const auto& clock = m_library.platform().clock;
    const auto home = m_library.platform().files.home();
    const auto newest = Copies::chosenOf(group, std::nullopt);
    std::unordered_map<std::string, int> filesIn;
    for (const auto& file : group.files) {
        ++filesIn[file.folder(home)];
    }
    std::vector<CopiesList::Row> rows;
    rows.reserve(group.files.size());
    for (const auto& file : group.files) {
        const auto folder = file.folder(home);
        rows.push_back(
            {.url = file.url,
             .folder = shownName(folder),
             .opened = QStringLiteral("Opened ") +
                       words(Formatting::relativeDescription(file.lastUsed, clock.now(), clock.calendar())),
             .name = filesIn[folder] > 1 ? shownName(file.name()) : QString(),
             .isNewest = file.url == newest,
             .isChosen = file.url == m_chosen,
             .isProtected = m_library.isProtected(file.url)});
    }
    return rows;
}

void DuplicateDetailView::showStats(const DuplicateGroup& group) {
    m_stats->setStats(
        {{QStringLiteral("Recoverable"), words(Formatting::byteCount(group.wastedBytes())), true},
         {QStringLiteral("Copies"), number(group.count())}});
}

// As the library has it now; none when it has gone.
std::vector<DuplicateGroup> DuplicateDetailView::shownGroup() const {
    return m_id ? selectedDuplicateGroups(m_library, {*m_id}) : std::vector<DuplicateGroup>();
}

void DuplicateDetailView::choose(const FileURL& copy) {
    m_keeper = copy;
    for (const auto& group : shownGroup()) {
        show(group);
    }
}

void DuplicateDetailView::reveal() {
    if (const auto urls = Copies::urlsOf(shownGroup()); !urls.empty()) {
        m_library.platform().workspace.reveal(urls);
    }
}

void DuplicateDetailView::askToRemove() {
    for (const auto& group : shownGroup()) {
        std::unordered_map<std::string, FileURL> keeping;
        if (const auto stays = Copies::chosenOf(group, m_chosen)) {
            keeping.emplace(group.id, *stays);
        }
        emit removalWanted(m_library.removalForDuplicates({group}, keeping));
    }
}

} // namespace quillane
