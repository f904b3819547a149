#pragma once
#include <QRect>
#include <QStyle>

class QPainter;
class QStyleOptionSlider;

// A scroll bar that is its thumb alone.
namespace quillane::ScrollBarDrawing {

inline constexpr int kExtent = 10;
inline constexpr int kLeastThumb = 36;

// Nothing where there is nothing to scroll.
void draw(const QStyleOptionSlider& option, QPainter& painter);
// Empty for a part that this bar has not.
QRect partOf(const QStyleOptionSlider& option, QStyle::SubControl part);

} // namespace quillane::ScrollBarDrawing
