#include "Components/Style/ToolTipDrawing.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

void ToolTipDrawing::drawGround(QPainter& painter, const QRect& rect) {
    const Tokens& tokens = Tokens::current();
    painter.fillRect(rect, tokens.card);
    painter.setPen(tokens.line);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
}

} // namespace quillane
