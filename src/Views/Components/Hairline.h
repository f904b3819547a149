#pragma once
#include <QColor>
#include <QRectF>

class QPainter;

namespace quillane::Hairline {

// Fills a line of one pixel's thickness, upright or level, in whole pixels of the screen: where a pixel of ours is
// one and a half of those, lines of the same kind are equally thick wherever they lie. Nothing turned or sheared.
void fill(QPainter& painter, const QRectF& line, const QColor& color);

} // namespace quillane::Hairline
