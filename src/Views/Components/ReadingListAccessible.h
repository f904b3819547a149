#pragma once
#include <QAccessibleWidget>
#include <QHash>
#include <QPersistentModelIndex>

namespace quillane {

class ReadingList;

// What assistive tools meet of a list that is only read. The base gives a list whose rows can be selected, which
// nothing would come of.
class ReadingListAccessible : public QAccessibleWidget {
  public:
    explicit ReadingListAccessible(ReadingList* list);
    ~ReadingListAccessible() override;

    // Every such list is met so from now on. May be called again.
    static void install();
    // What was met of these rows goes, as do the rows: before they have gone, or after all have.
    static void forget(ReadingList& list, int first, int last);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

  private:
    ReadingList& list() const;
    QAccessibleInterface* at(const QModelIndex& row) const;

    mutable QHash<QPersistentModelIndex, QAccessible::Id> m_met;
};

} // namespace quillane
