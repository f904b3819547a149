#include "Review/SweepReviewList.h"
#include "Components/FocusRing.h"
#include "Review/SweepReviewAccessible.h"
#include "Review/SweepReviewDelegate.h"
#include "Review/SweepReviewModel.h"
#include <QHeaderView>
#include <QKeyEvent>

namespace quillane {

SweepReviewList::SweepReviewList(SweepReviewModel& model, QWidget* parent)
    : QTreeView(parent) {
    SweepReviewAccessible::install(); // first, as whoever asks before is given another one for good
    setAccessibleName(QStringLiteral("Items to review"));
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setIndentation(0);
    setAnimated(false);
    setFrameShape(NoFrame);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    setItemDelegate(new SweepReviewDelegate(this));
    setModel(&model);
    expandAll();
    setCurrentIndex(firstEntry());
}

QModelIndex SweepReviewList::firstEntry() const {
    return model()->index(0, 0, model()->index(0, 0));
}

void SweepReviewList::drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                              const QModelIndex& index) const {
    QStyleOptionViewItem option = options;
    const bool ringed = index == currentIndex() && FocusRing::isShownFor(this);
    option.state.setFlag(QStyle::State_HasFocus, ringed);
    itemDelegate()->paint(painter, option, index);
}

void SweepReviewList::drawBranches(QPainter*, const QRect&, const QModelIndex&) const {}

// A key in the list means that the user works by keyboard and must see which row the next key is for.
void SweepReviewList::keyPressEvent(QKeyEvent* event) {
    if (!window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        window()->setAttribute(Qt::WA_KeyboardFocusChange);
        viewport()->update();
    }
    QTreeView::keyPressEvent(event);
}

// In the next turn, as the focus of the list itself is told after this.
void SweepReviewList::focusInEvent(QFocusEvent* event) {
    QTreeView::focusInEvent(event);
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (hasFocus()) {
                SweepReviewAccessible::tellFocus(*this);
            }
        },
        Qt::QueuedConnection);
}

// These two leave QTreeView out, which tells assistive tools of cells by a number that means nothing here.
void SweepReviewList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
    if (hasFocus()) {
        SweepReviewAccessible::tellFocus(*this);
    }
}

void SweepReviewList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QAbstractItemView::selectionChanged(selected, deselected); // NOLINT(bugprone-parent-virtual-call)
}

void SweepReviewList::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                  const QList<int>& roles) {
    QTreeView::dataChanged(topLeft, bottomRight, roles);
    if (roles.contains(Qt::CheckStateRole)) {
        SweepReviewAccessible::tellTick(*this, topLeft);
    }
}

QModelIndex SweepReviewList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action == MoveLeft || action == MoveRight) {
        return currentIndex();
    }
    const QModelIndex wanted = QTreeView::moveCursor(action, modifiers);
    if (!wanted.isValid() || SweepReviewModel::isEntry(wanted)) {
        return wanted;
    }
    const bool upwards = action == MoveUp || action == MovePrevious || action == MovePageUp;
    const QModelIndex beyond = upwards ? indexAbove(wanted) : indexBelow(wanted);
    return beyond.isValid() ? beyond : firstEntry();
}

// The first row of a category brings the category's header with it.
void SweepReviewList::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (hint == EnsureVisible && SweepReviewModel::isEntry(index) && index.row() == 0) {
        QTreeView::scrollTo(index.parent(), hint);
    }
    QTreeView::scrollTo(index, hint);
}

void SweepReviewList::keyboardSearch(const QString& search) {
    QTreeView::keyboardSearch(search);
    const QModelIndex found = currentIndex();
    if (found.isValid() && !SweepReviewModel::isEntry(found)) {
        setCurrentIndex(model()->index(0, 0, found));
    }
}

} // namespace quillane
