#include "Panes/PaneList.h"
#include <QFocusEvent>
#include <QScrollArea>
#include <algorithm>

namespace quillane {

PaneList::PaneList(QWidget* parent)
    : ReadingList(parent) {
    setUniformItemSizes(true);
    setFrameShape(NoFrame);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabKeyNavigation(false);
    viewport()->setAutoFillBackground(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize PaneList::sizeHint() const {
    return {200, model()->rowCount() * rowHeight()};
}

QSize PaneList::minimumSizeHint() const {
    return {120, sizeHint().height()};
}

void PaneList::scrollTo(const QModelIndex& index, ScrollHint) {
    QWidget* ancestor = parentWidget();
    while (ancestor != nullptr && qobject_cast<QScrollArea*>(ancestor) == nullptr) {
        ancestor = ancestor->parentWidget();
    }
    if (ancestor == nullptr || !index.isValid()) {
        return;
    }
    auto* const pane = qobject_cast<QScrollArea*>(ancestor);
    const QRect row = visualRect(index);
    const QPoint middle = viewport()->mapTo(pane->widget(), row.center());
    pane->ensureVisible(middle.x(), middle.y(), 0, row.height());
}

void PaneList::focusInEvent(QFocusEvent* event) {
    ReadingList::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        scrollTo(currentIndex());
    }
}

QModelIndex PaneList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const int last = model()->rowCount() - 1;
    if ((action != MovePageUp && action != MovePageDown) || last < 0) {
        return ReadingList::moveCursor(action, modifiers);
    }
    // A page is what the pane shows, and not the whole list.
    const int seen = viewport()->visibleRegion().boundingRect().height();
    const int page = std::max(1, seen / rowHeight() - 1);
    const int wanted = currentIndex().row() + (action == MovePageDown ? page : -page);
    return model()->index(std::clamp(wanted, 0, last), 0);
}

} // namespace quillane
