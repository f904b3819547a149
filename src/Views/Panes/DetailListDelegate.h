#pragma once
#include <QRectF>
#include <QStyledItemDelegate>

namespace quillane {

// Draws a row of a DetailList as ListRow lays one out.
class DetailListDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // Of every row, the line above it included.
    static int rowHeight();
    // Where the mark of a protected row stands.
    static QRectF markOf(const QRect& row, const QModelIndex& index);
    // Where the symbol of a row stands.
    static QRectF symbolOf(const QRect& row);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

} // namespace quillane
