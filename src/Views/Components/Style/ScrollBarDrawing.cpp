#include "Components/Style/ScrollBarDrawing.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <QStyleOptionSlider>
#include <algorithm>

namespace quillane {

namespace {

// Along the bar, in pixels.
struct Thumb {
    int start;
    int length;
};

Thumb thumbIn(int bar, const QStyleOptionSlider& option) {
    const qint64 range = static_cast<qint64>(option.maximum) - option.minimum;
    const qint64 page = std::max(1, option.pageStep);
    const int wish = range > 0 ? static_cast<int>(page * bar / (range + page)) : bar;
    const int length = std::min(bar, std::max(ScrollBarDrawing::kLeastThumb, wish));
    return {QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                            bar - length, option.upsideDown),
            length};
}

} // namespace

QRect ScrollBarDrawing::partOf(const QStyleOptionSlider& option, QStyle::SubControl part) {
    const QRect rect = option.rect;
    const bool flat = option.orientation == Qt::Horizontal;
    const int length = flat ? rect.width() : rect.height();
    const Thumb thumb = thumbIn(length, option);
    const auto stretch = [&](int from, int extent) {
        return flat ? QRect(rect.x() + from, rect.y(), extent, rect.height())
                    : QRect(rect.x(), rect.y() + from, rect.width(), extent);
    };
    switch (part) {
    case QStyle::SC_ScrollBarSlider:
        return stretch(thumb.start, thumb.length);
    case QStyle::SC_ScrollBarGroove:
        return rect;
    case QStyle::SC_ScrollBarSubPage:
        return stretch(0, thumb.start);
    case QStyle::SC_ScrollBarAddPage:
        return stretch(thumb.start + thumb.length, length - thumb.start - thumb.length);
    default:
        return {};
    }
}

void ScrollBarDrawing::draw(const QStyleOptionSlider& option, QPainter& painter) {
    if (option.maximum <= option.minimum) {
        return;
    }
    const bool hot = option.state & (QStyle::State_MouseOver | QStyle::State_Sunken);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(Tokens::current().text3, hot ? 0.75 : 0.42));
    painter.drawRoundedRect(QRectF(partOf(option, QStyle::SC_ScrollBarSlider)).adjusted(2, 2, -2, -2), 3, 3);
    painter.restore();
}

} // namespace quillane
