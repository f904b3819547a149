#pragma once
#include <QRect>
#include <QSize>
#include <QStyle>
#include <optional>

class QPainter;
class QStyleOptionComboBox;

// A button that opens a list. One that can be typed into stays as the base style draws it.
namespace quillane::ComboBoxDrawing {

// The ground and the arrow; the words are a label of their own.
void draw(const QStyleOptionComboBox& option, QPainter& painter);
// Nothing for a part that the base style places.
std::optional<QRect> partOf(const QRect& box, QStyle::SubControl part);
// Round words of this size.
QSize sizeAround(const QSize& words);

} // namespace quillane::ComboBoxDrawing
