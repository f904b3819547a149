#pragma once
#include <QRect>
#include <QSize>
#include <QStyle>
#include <optional>

class QPainter;
class QStyleOptionSpinBox;

// A figure and its stepper. The figure stands free and gets a field only while it is typed into.
namespace quillane::SpinBoxDrawing {

void draw(const QStyleOptionSpinBox& option, QPainter& painter);
// Nothing for a part that the base style places.
std::optional<QRect> partOf(const QRect& box, QStyle::SubControl part);
// Round a figure of this size.
QSize sizeAround(const QSize& figure);

} // namespace quillane::SpinBoxDrawing
