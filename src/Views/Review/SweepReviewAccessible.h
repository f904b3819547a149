#pragma once
#include <QAccessibleWidget>
#include <QHash>
#include <QModelIndex>

namespace quillane {

class SweepReviewList;

// What assistive tools meet of a review: groups, one for each category, of check boxes that can really be ticked.
// The base gives a list whose rows can only be selected, which would be taken for ticked.
class SweepReviewAccessible : public QAccessibleWidget {
  public:
    explicit SweepReviewAccessible(SweepReviewList* list);
    ~SweepReviewAccessible() override;

    // Every review is met so from now on. May be called again.
    static void install();
    // Told to whoever listens: the keyboard has come to the current row; the rows' ticks and their category's sum
    // are others than before.
    static void tellFocus(SweepReviewList& list);
    static void tellTick(SweepReviewList& list, const QModelIndex& row);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

    // The category or row at an index of the list's model; made when it is first asked for. Null for none.
    QAccessibleInterface* at(const QModelIndex& index) const;

  private:
    SweepReviewList& list() const;
    static SweepReviewAccessible& of(SweepReviewList& list);

    // The model of a review keeps its rows where they are, so that an index stays good.
    mutable QHash<QModelIndex, QAccessible::Id> m_met;
};

} // namespace quillane
