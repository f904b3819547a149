#include "Shell/Sidebar.h"
#include "Components/LibraryObserver.h"
#include "Components/ShownText.h"
#include "Components/SidebarView.h"
#include "Formatting.h"
#include "Shell/BrandButton.h"
#include "State/ContentState.h"
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <utility>

namespace quillane {

Sidebar::Sidebar(ContentState& state, std::vector<Entry> entries, QWidget* parent)
    : ColumnGround(Ground::Sidebar, parent)
    , m_state(state)
    , m_entries(std::move(entries))
    , m_brand(new BrandButton)
    , m_list(new SidebarView(QStringLiteral("Sections")))
    , m_observer(new LibraryObserver([this] { render(); }, this)) {
    for (const auto& entry : m_entries) {
        m_list->addSection(words(rawValue(entry.section)), words(symbol(entry.section)));
    }

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_brand);
    column->addWidget(m_list, 1);

    connect(m_list, &QListWidget::itemSelectionChanged, this, [this] { enterSelected(); });
    m_observer->renderNow();
}

// Of the selection and not of the current row, as assistive tools select without making current. While the
// selection changes hands there may be none.
void Sidebar::enterSelected() {
    const auto selected = m_list->selectedItems();
    if (!selected.isEmpty()) {
        const int row = m_list->row(selected.front());
        m_list->setCurrentRow(row, QItemSelectionModel::NoUpdate); // where the arrows go on from
        m_state.section = m_entries[static_cast<std::size_t>(row)].section;
    }
}

void Sidebar::render() {
    const QSignalBlocker blocker(m_list);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const auto& entry = m_entries[i];
        const int row = static_cast<int>(i);
        const int count = entry.badge();
        const QString title = words(rawValue(entry.section));
        const QString number = words(Formatting::number(count));
        const bool countsProblems = entry.badgeTint == Tint::Orange;
        const QString spoken =
            countsProblems ? words(Formatting::counted(count, "problem")) : number; // "Startup, 3 problems"
        m_list->setBadge(row, count == 0 ? QString() : number,
                         count == 0 ? title : title + QStringLiteral(", ") + spoken, entry.badgeTint);
        if (entry.section == m_state.section.get()) {
            m_list->setCurrentRow(row);
        }
    }
}

} // namespace quillane
