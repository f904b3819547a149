#pragma once

class QFocusFrame;
class QPainter;
class QStyle;

// The ring round the control that has the focus; FocusRing says when it is there.
namespace quillane::FocusFrameDrawing {

inline constexpr int kWidth = 3;

// `style` tells where the control has its check box or circle. A control's property "focusRadius" says how
// round it is where its height does not.
void draw(QPainter& painter, const QFocusFrame& frame, const QStyle& style);

} // namespace quillane::FocusFrameDrawing
