#include "Components/ReadingList.h"
#include "Components/ReadingListAccessible.h"
#include <limits>

namespace quillane {

ReadingList::ReadingList(QWidget* parent)
    : QListView(parent) {
    ReadingListAccessible::install(); // first, as whoever asks before is given another one for good
    setSelectionMode(NoSelection);
}

void ReadingList::reset() {
    QListView::reset();
    ReadingListAccessible::forget(*this, 0, std::numeric_limits<int>::max());
}

void ReadingList::rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) {
    ReadingListAccessible::forget(*this, first, last);
    QListView::rowsAboutToBeRemoved(parent, first, last);
}

} // namespace quillane
