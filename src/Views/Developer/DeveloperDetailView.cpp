#include "Developer/DeveloperDetailView.h"
#include "AppLibrary.h"
#include "Clock.h"
#include "Components/DetailHeader.h"
#include "Components/Label.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/ProtectedMark.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Components/StatGrid.h"
#include "Components/Tile.h"
#include "Formatting.h"
#include "Panes/DaysAgo.h"
#include "Panes/SelectedRecords.h"
#include "Workspace.h"

namespace quillane {

namespace {
constexpr int kTileSide = 48;
} // namespace

DeveloperDetailView::DeveloperDetailView(AppLibrary& library, QWidget* parent)
    : DetailPane(QStringLiteral("Move to Trash"), QStringLiteral("Details of the location"), parent)
    , m_library(library)
    , m_header(new DetailHeader(new Tile(QStringLiteral("hammer.fill"), Tint::Developer, kTileSide), {}))
    , m_consequence(Label::wrapped({}, TextStyle::row()))
    , m_consequencePanel(new Panel(QStringLiteral("If you remove it"), m_consequence))
    , m_stats(new StatGrid)
    , m_protectedNote(
          new Note(ProtectedMark::symbolName(),
                   QStringLiteral("Protected. Quillane will not remove this until you lift the protection."),
                   Tint::Green)) {
    blocks()->addWidget(m_header);
    blocks()->addWidget(m_consequencePanel);
    blocks()->addWidget(new Panel(std::nullopt, m_stats));
    blocks()->addWidget(m_protectedNote);
}

void DeveloperDetailView::show(const DevCacheItem& item) {
    if (m_url != item.url) {
        scrollToTop();
    }
    m_url = item.url;
    const bool isProtected = m_library.isProtected(item.url);
    m_header->setTexts(shownName(item.kind), shownName(item.tool));
    m_consequence->setText(shownName(item.consequence)); // may name a project's folder
    showStats(item);
    m_protectedNote->setVisible(isProtected);
    removeButton()->setEnabled(!isProtected);
}

void DeveloperDetailView::showStats(const DevCacheItem& item) {
    const auto& clock = m_library.platform().clock;
    m_stats->setStats(
        {{QStringLiteral("Size"), words(Formatting::byteCount(item.bytes)), true},
         {QStringLiteral("Last Touched"), daysAgo(item.daysSinceModified(clock.now(), clock.calendar()))},
         {QStringLiteral("Clean Now"),
          item.safeToSweep ? QStringLiteral("Included") : QStringLiteral("Never")}});
}

void DeveloperDetailView::reveal() {
    if (m_url) {
        m_library.platform().workspace.reveal({*m_url});
    }
}

void DeveloperDetailView::askToRemove() {
    if (!m_url || m_library.isProtected(*m_url)) {
        return;
    }
    const auto items = selectedDeveloperItems(m_library, {*m_url});
    if (!items.empty()) {
        emit removalWanted(m_library.removalForDeveloperItems(items));
    }
}

} // namespace quillane
