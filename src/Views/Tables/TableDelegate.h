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

    // Where the parts of a cell lie; those that it lacks are empty.
    struct Layout {
        QRectF picture, symbol, text, trailing, further, protectedMark;
        QString shown; // the text as it fits
        bool elided = false;
    };
    Layout layout(const QRect& cell, const QModelIndex& index) const;

  private:
    void paintText(QPainter& painter, const Layout& layout, const QModelIndex& index, const QColor& color,
                   bool onSelection) const;

    TableView* m_view;
};

} // namespace quillane
