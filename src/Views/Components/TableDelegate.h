#pragma once
#include <QStyledItemDelegate>

namespace quillane {

class TableView;

// Draws the cells of a TableView by TableRole. The bars behind them are the view's.
class TableDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit TableDelegate(TableView* view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    // Whether the cell's text does not fit into `width` pixels of cell.
    bool isElided(const QModelIndex& index, int width) const;

    struct Layout; // where the parts of a cell lie

  private:
    TableView* m_view;
};

} // namespace quillane
