#include "Overview/OverviewDetailView.h"
#include "AppLibrary.h"
#include "Components/CategoryTint.h"
#include "Components/EmptyState.h"
#include "Components/LibraryObserver.h"
#include "Components/ListRow.h"
#include "Components/PaneScroll.h"
#include "Components/Panel.h"
#include "Components/ShownText.h"
#include "Components/ToolbarRow.h"
#include "Formatting.h"
#include "Overview/OverviewCategories.h"
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace quillane {

namespace {

const auto kTitle = QStringLiteral("What's included");

std::vector<SweepEntry> largest(std::vector<SweepEntry> plan) {
    std::stable_sort(plan.begin(), plan.end(),
                     [](const SweepEntry& a, const SweepEntry& b) { return a.bytes > b.bytes; });
    if (plan.size() > OverviewDetailView::kRows)
        plan.resize(OverviewDetailView::kRows);
    return plan;
}

} // namespace

OverviewDetailView::OverviewDetailView(AppLibrary& library, QWidget* parent)
    : QWidget(parent)
    , m_library(library)
    , m_toolbar(new ToolbarRow({}, ToolbarRow::Line::None))
    , m_placeholder(new EmptyState(QStringLiteral("checklist"), {},
                                   QStringLiteral("Tick a category to see what it includes."),
                                   EmptyState::kDetailWidth))
    , m_states(new QStackedWidget) {
    auto* const content = new QWidget;
    m_column = new QVBoxLayout(content);
    m_column->setContentsMargins(16, 0, 16, 16);
    m_column->setSpacing(12);
    m_column->addStretch(1);
    m_scroll = new PaneScroll(kTitle, content);
    m_states->addWidget(m_placeholder);
    m_states->addWidget(m_scroll);

    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addWidget(m_toolbar);
    whole->addWidget(m_states, 1);
    m_observer = new LibraryObserver([this] { render(); }, this);
    m_observer->drawOnlyInSight(this);
    m_observer->renderNow();
}

bool OverviewDetailView::showsPlaceholder() const {
    return m_states->currentWidget() == m_placeholder;
}

void OverviewDetailView::render() {
    const bool isEmpty = m_library.selectedSweepBytes() == 0;
    show(isEmpty ? std::vector<Group>() : groups());
    m_toolbar->setTitle(isEmpty ? QString() : kTitle);
    m_states->setCurrentWidget(isEmpty ? static_cast<QWidget*>(m_placeholder) : m_scroll);
}

std::vector<OverviewDetailView::Group> OverviewDetailView::groups() const {
    std::vector<Group> groups;
    for (const auto category : kOverviewCategories) {
        if (!m_library.sweepSelection->contains(category))
            continue;
        auto plan = m_library.plan(category);
        if (!plan.empty())
            groups.emplace_back(category, largest(std::move(plan)));
    }
    return groups;
}

// Only what differs is built anew: during a scan the plans change often and the rows shown seldom.
void OverviewDetailView::show(std::vector<Group> groups) {
    if (m_groups == groups)
        return;
    m_groups = std::move(groups);
    for (auto* const panel : m_panels)
        delete panel;
    m_panels.clear();
    for (const auto& group : m_groups) {
        m_panels.push_back(panelOf(group));
        m_column->insertWidget(m_column->count() - 1, m_panels.back()); // above the stretch
    }
}

Panel* OverviewDetailView::panelOf(const Group& group) {
    const auto& [category, entries] = group;
    auto* const panel = new Panel(words(rawValue(category)));
    for (const auto& entry : entries) {
        panel->addRow(new ListRow(words(symbol(category)), shownName(entry.title), shownName(entry.subtitle),
                                  words(Formatting::byteCount(entry.bytes)), tintOf(category)));
    }
    return panel;
}

} // namespace quillane
