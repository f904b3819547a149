#pragma once
#include <QTreeView>

namespace quillane {

class SweepReviewModel;

// The list of a review: every row under its category, drawn and never made of widgets, so that it opens at
// once however long it is. Arrow keys go from row to row and pass the categories by; Tab leaves the list.
class SweepReviewList : public QTreeView {
    Q_OBJECT
  public:
    // The model outlives the list.
    explicit SweepReviewList(SweepReviewModel& model, QWidget* parent = nullptr);

    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void keyboardSearch(const QString& search) override;

  protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                 const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QList<int>& roles) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

  private:
    QModelIndex firstEntry() const;
};

} // namespace quillane
