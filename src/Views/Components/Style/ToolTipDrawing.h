#pragma once

class QPainter;
class QRect;

// The ground of a tooltip.
namespace quillane::ToolTipDrawing {

void drawGround(QPainter& painter, const QRect& rect);

} // namespace quillane::ToolTipDrawing
