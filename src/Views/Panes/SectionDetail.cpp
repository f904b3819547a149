#include "Panes/SectionDetail.h"
#include "Components/DateWords.h"
#include "Components/LibraryObserver.h"
#include "Panes/DetailPane.h"
#include "Panes/PanePlaceholder.h"
#include "Panes/SelectionSummary.h"
#include "State/ContentState.h"
#include <QEvent>

namespace quillane {

SectionDetail::SectionDetail(ContentState& state, QWidget* parent)
    : QStackedWidget(parent)
    , m_state(state)
    , m_observer(new LibraryObserver([this] { render(); }, this)) {}

void SectionDetail::begin(PanePlaceholder* none, DetailPane* one, SelectionSummary* several) {
    m_none = none;
    m_one = one;
    m_several = several;
    for (auto* const pane : {static_cast<QWidget*>(none), m_one, m_several}) {
        addWidget(pane);
    }
    connect(one, &DetailPane::removalWanted, this,
            [this](const BulkRemoval& removal) { m_state.removal = removal; });
    connect(several, &SelectionSummary::removeWanted, this,
            [this] { m_state.removal = removalForSelection(); });
    m_observer->drawOnlyInSight(this);
    m_observer->renderNow();
}

bool SectionDetail::event(QEvent* event) {
    if (dateWordsMayDiffer(*event)) {
        m_observer->schedule();
    }
    return QStackedWidget::event(event);
}

void SectionDetail::render() {
    const auto selected = fill();
    if (selected == 0) {
        showPane(m_none);
    } else {
        showPane(selected == 1 ? m_one : m_several);
    }
}

// Left to itself the stack hands the keyboard to the next pane: to what had it there last, which may be the
// button that removes, or to nothing that can be seen.
void SectionDetail::showPane(QWidget* pane) {
    const auto* const focused = window()->focusWidget();
    if (m_keyboardHeir && pane != currentWidget() && focused != nullptr && isAncestorOf(focused)) {
        m_keyboardHeir->setFocus();
    }
    setCurrentWidget(pane);
}

} // namespace quillane
