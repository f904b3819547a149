#include "Components/Style/CheckBoxDrawing.h"
#include "Components/Style/ControlGround.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <cmath>

namespace quillane {

namespace {

// The symbol of that name would be a hair at this size.
void drawTick(QPainter& painter, const QRectF& box, bool mixed) {
    const auto at = [&box](double x, double y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    constexpr double kStroke = 0.075; // of the box
    painter.setPen(QPen(Qt::white, kStroke * box.width(), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    if (mixed) { // on whole pixels, as it lies along them
        const double y = std::floor(box.center().y()) + 0.5;
        painter.drawLine(QPointF(at(0.28, 0).x(), y), QPointF(at(0.72, 0).x(), y));
    } else {
        painter.drawPolyline(QPolygonF{at(0.27, 0.52), at(0.43, 0.68), at(0.73, 0.32)});
    }
}

} // namespace

void CheckBoxDrawing::draw(QPainter& painter, const QRectF& rect, QStyle::State state) {
    const Tokens& tokens = Tokens::current();
    const bool mixed = state & QStyle::State_NoChange;
    const bool on = mixed || (state & QStyle::State_On);
    QColor ground = on ? tokens.accent : tokens.ctl;
    if (state & QStyle::State_Sunken) {
        ground = ground.darker(ControlGround::kPressedPercent);
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity((state & QStyle::State_Enabled) ? painter.opacity() : painter.opacity() * 0.4);
    painter.setPen(on ? QPen(Qt::NoPen) : QPen(tokens.text3, 1.5));
    painter.setBrush(ground);
    const double inset = on ? 0 : 0.75;
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), kRadius - inset / 2,
                            kRadius - inset / 2);
    if (on) {
        drawTick(painter, rect, mixed);
    }
    painter.restore();
}

} // namespace quillane
