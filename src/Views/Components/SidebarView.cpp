#include "Components/SidebarView.h"
#include "Components/Fonts.h"
#include "Components/SidebarDelegate.h"

namespace quillane {

SidebarView::SidebarView(const QString& name, QWidget* parent)
    : QListWidget(parent) {
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setItemDelegate(new SidebarDelegate(this));
    setSelectionMode(SingleSelection);
    setUniformItemSizes(true);
    setMouseTracking(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);
    viewport()->setAutoFillBackground(false);
}

void SidebarView::addSection(const QString& title, const QString& symbol) {
    auto* entry = new QListWidgetItem(title, this);
    entry->setData(SidebarDelegate::kSymbolRole, symbol);
    entry->setData(Qt::AccessibleTextRole, title);
}

void SidebarView::setBadge(int row, const QString& text, const QString& spoken, Tint tint) {
    QListWidgetItem* entry = item(row);
    if (entry == nullptr) {
        return;
    }
    entry->setData(SidebarDelegate::kBadgeRole, text);
    entry->setData(SidebarDelegate::kBadgeTintRole, static_cast<int>(tint));
    entry->setData(Qt::AccessibleTextRole, spoken);
}

QString SidebarView::badge(int row) const {
    const QListWidgetItem* entry = item(row);
    return entry != nullptr ? entry->data(SidebarDelegate::kBadgeRole).toString() : QString();
}

QSize SidebarView::sizeHint() const {
    return {kWidth, count() * (Fonts::rowHeight(kItemHeight) + kItemGap)};
}

QSize SidebarView::minimumSizeHint() const {
    return {120, 0};
}

QItemSelectionModel::SelectionFlags SidebarView::selectionCommand(const QModelIndex& index,
                                                                  const QEvent*) const {
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

} // namespace quillane
