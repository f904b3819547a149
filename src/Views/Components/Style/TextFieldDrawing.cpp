#include "Components/Style/TextFieldDrawing.h"
#include "Components/Style/ControlGround.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

void TextFieldDrawing::draw(QPainter& painter, const QRectF& rect, QStyle::State state, bool framed) {
    constexpr double kRadius = ControlGround::kFieldRadius;
    const Tokens& tokens = Tokens::current();
    painter.save();
    if (!(state & QStyle::State_Enabled)) {
        painter.setOpacity(ControlGround::kDisabledShare);
    }
    if (state & QStyle::State_HasFocus) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(tokens.accent, 2));
        painter.setBrush(tokens.ctl);
        painter.drawRoundedRect(rect.adjusted(1, 1, -1, -1), kRadius - 1, kRadius - 1);
    } else if (framed) {
        ControlGround::draw(painter, rect, kRadius, tokens.ctl, tokens.ctlLine);
    } else {
        ControlGround::draw(painter, rect, kRadius, tokens.fill,
                            tokens.highContrast ? tokens.ctlLine : QColor(Qt::transparent));
    }
    painter.restore();
}

} // namespace quillane
