#pragma once
#include <QRect>
#include <QStyledItemDelegate>

namespace quillane {

// Draws a row of a CopiesList: the mark of the choice, folder over a second line, and the button that looks.
class CopiesDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // Of every row, the gap to the next one included.
    static int rowHeight();
    // Where the button of a row lies, and the mark of a protected one.
    static QRect lookOf(const QRect& row);
    static QRect markOf(const QRect& row);
    // What the suggested copy bears.
    static QString newestWord();

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

} // namespace quillane
