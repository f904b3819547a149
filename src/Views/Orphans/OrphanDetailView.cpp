#include "Orphans/OrphanDetailView.h"
#include "AppLibrary.h"
#include "Clock.h"
#include "Components/DetailHeader.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Components/StatGrid.h"
#include "Components/Tile.h"
#include "Formatting.h"
#include "Panes/DaysAgo.h"
#include "Panes/DetailList.h"
#include "Panes/SelectedRecords.h"
#include "Workspace.h"
#include <algorithm>

namespace quillane {

namespace {
constexpr int kTileSide = 48;
} // namespace

OrphanDetailView::OrphanDetailView(AppLibrary& library, QWidget* parent)
    : DetailPane(QStringLiteral("Move to Trash"), QStringLiteral("Details of the orphaned files"), parent)
    , m_library(library)
    , m_header(new DetailHeader(
          new Tile(QStringLiteral("questionmark.folder.fill"), Tint::Orphans, kTileSide), {}))
    , m_adminNote(new Note(QStringLiteral("lock.fill"),
                           QStringLiteral("Some files sit outside your home folder and need admin rights.")))
    , m_stats(new StatGrid)
    , m_files(new DetailList(QStringLiteral("Files")))
    , m_filesPanel(new Panel(QStringLiteral("Files"), m_files)) {
    m_filesPanel->setOverhang(DetailList::kOverhang);
    blocks()->addWidget(m_header);
    blocks()->addWidget(m_adminNote);
    blocks()->addWidget(new Panel(std::nullopt, m_stats));
    blocks()->addWidget(m_filesPanel);
}

void OrphanDetailView::show(const OrphanGroup& group) {
    if (m_vendor != group.vendor) {
        scrollToTop();
    }
    m_vendor = group.vendor;
    m_header->setTexts(shownName(group.title()), QStringLiteral("No installed app claims this data."));
    m_adminNote->setVisible(group.requiresAdmin());
    showStats(group);
    showFiles(group.items);
    removeButton()->setEnabled(!m_library.sweepableItems(group).empty());
}

void OrphanDetailView::showStats(const OrphanGroup& group) {
    const auto& clock = m_library.platform().clock;
    m_stats->setStats(
        {{QStringLiteral("Reclaimable"), words(Formatting::byteCount(group.totalBytes())), true},
         {QStringLiteral("Files"), words(Formatting::number(static_cast<std::int64_t>(group.items.size())))},
         {QStringLiteral("Last Touched"), daysAgo(group.daysSinceModified(clock.now(), clock.calendar()))}});
}

void OrphanDetailView::showFiles(const std::vector<OrphanItem>& items) {
    std::vector<DetailList::Row> rows;
    rows.reserve(items.size());
    for (const auto& item : items) {
        rows.push_back({item.url, item.requiresAdmin ? QStringLiteral("lock.fill") : QStringLiteral("doc"),
                        shownName(item.url.lastPathComponent()), words(item.category),
                        words(Formatting::byteCount(item.bytes)), m_library.isProtected(item.url),
                        item.requiresAdmin ? lockHelp() : QString()});
    }
    m_files->setRows(std::move(rows));
}

std::optional<OrphanGroup> OrphanDetailView::current() const {
    if (!m_vendor) {
        return std::nullopt;
    }
    const auto groups = selectedOrphanGroups(m_library, {*m_vendor});
    return groups.empty() ? std::nullopt : std::optional(groups.front());
}

void OrphanDetailView::reveal() {
    if (const auto group = current()) {
        std::vector<FileURL> urls;
        std::ranges::transform(group->items, std::back_inserter(urls), &OrphanItem::url);
        m_library.platform().workspace.reveal(urls);
    }
}

void OrphanDetailView::askToRemove() {
    const auto group = current();
    if (group && !m_library.sweepableItems(*group).empty()) {
        emit removalWanted(m_library.removalForOrphanGroups({*group}));
    }
}

} // namespace quillane
