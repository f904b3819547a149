#pragma once
#include <QStyle>

// A check box of any side.
namespace quillane::CheckBoxDrawing {

inline constexpr double kRadius = 4.5;

// `state` as for PE_IndicatorCheckBox.
void draw(QPainter& painter, const QRectF& rect, QStyle::State state);

} // namespace quillane::CheckBoxDrawing
