#pragma once
#include <QStyle>

// The circle of a radio button.
namespace quillane::RadioButtonDrawing {

// `state` as for PE_IndicatorRadioButton.
void draw(QPainter& painter, const QRectF& rect, QStyle::State state);

} // namespace quillane::RadioButtonDrawing
