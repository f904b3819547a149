#include "Components/FlowLayout.h"
#include <algorithm>

namespace quillane {

FlowLayout::FlowLayout(QWidget* parent, int spacing)
    : QLayout(parent) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem* item) {
    m_items.emplace_back(item);
}

QLayoutItem* FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
    if (index < 0 || index >= count()) {
        return nullptr;
    }
    QLayoutItem* const taken = m_items[static_cast<std::size_t>(index)].release();
    m_items.erase(m_items.begin() + index);
    return taken;
}

std::vector<QRect> FlowLayout::places(int width) const {
    std::vector<QRect> result;
    int x = 0;
    int y = 0;
    int rowHeight = 0;
    for (const auto& item : m_items) {
        if (item->isEmpty()) {
            result.emplace_back();
            continue;
        }
        const QSize size = item->sizeHint();
        if (x > 0 && x + size.width() > width) {
            x = 0;
            y += rowHeight + spacing();
            rowHeight = 0;
        }
        result.emplace_back(QPoint(x, y), size);
        x += size.width() + spacing();
        rowHeight = std::max(rowHeight, size.height());
    }
    return result;
}

int FlowLayout::heightForWidth(int width) const {
    int height = 0;
    for (const QRect& place : places(width)) {
        height = std::max(height, place.y() + place.height());
    }
    return height;
}

QSize FlowLayout::sizeHint() const {
    QRect whole;
    for (const QRect& place : places(QLAYOUTSIZE_MAX)) {
        whole |= place;
    }
    return whole.size();
}

QSize FlowLayout::minimumSize() const {
    QSize size(0, 0);
    for (const auto& item : m_items) {
        if (!item->isEmpty()) {
            size = size.expandedTo(item->sizeHint());
        }
    }
    return size;
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    const auto all = places(rect.width());
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!all[i].isEmpty()) {
            m_items[i]->setGeometry(all[i].translated(rect.topLeft()));
        }
    }
}

} // namespace quillane
