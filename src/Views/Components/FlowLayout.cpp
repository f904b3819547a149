#include "Components/FlowLayout.h"
#include <algorithm>
#include <span>

namespace quillane {

namespace {

void moveToTheMiddle(std::span<QRect> row, int width) {
    QRect whole;
    for (const QRect& place : row) {
        whole |= place;
    }
    for (QRect& place : row) {
        if (place.isEmpty()) {
            continue; // hidden: it has no place
        }
        place.translate((width - whole.width()) / 2, 0);
    }
}

} // namespace

FlowLayout::FlowLayout(QWidget* parent, int spacing)
    : QLayout(parent)
    , m_rowSpacing(spacing) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::setCentred(bool centred) {
    m_centred = centred;
    invalidate();
}

void FlowLayout::setRowSpacing(int spacing) {
    m_rowSpacing = spacing;
    invalidate();
}

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
    std::size_t rowBegin = 0;
    const auto endRow = [&] {
        if (m_centred) {
            moveToTheMiddle(std::span(result).subspan(rowBegin), width);
        }
        rowBegin = result.size();
    };
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
            endRow();
            x = 0;
            y += rowHeight + m_rowSpacing;
            rowHeight = 0;
        }
        result.emplace_back(QPoint(x, y), size);
        x += size.width() + spacing();
        rowHeight = std::max(rowHeight, size.height());
    }
    endRow();
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
