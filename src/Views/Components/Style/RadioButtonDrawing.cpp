#include "Components/Style/RadioButtonDrawing.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

void RadioButtonDrawing::draw(QPainter& painter, const QRectF& rect, QStyle::State state) {
    const Tokens& tokens = Tokens::current();
    const bool on = state & QStyle::State_On;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity((state & QStyle::State_Enabled) ? 1 : 0.4);
    const QRectF edge = rect.adjusted(0.75, 0.75, -0.75, -0.75);
    painter.setPen(QPen(on ? tokens.accent : tokens.text3, 1.5));
    painter.setBrush(on ? tokens.accent : tokens.ctl);
    painter.drawEllipse(edge);
    if (on) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        const double inner = rect.width() * 0.19;
        painter.drawEllipse(rect.center(), inner, inner);
    }
    painter.restore();
}

} // namespace quillane
