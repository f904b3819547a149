#pragma once
#include <QStyledItemDelegate>

namespace quillane {

// Draws the items of a SidebarView.
class SidebarDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    enum Role : int { kSymbolRole = Qt::UserRole + 1, kBadgeRole, kBadgeTintRole };

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace quillane
