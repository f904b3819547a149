#pragma once
#include <QStyle>

// The ground of a field that text is typed into.
namespace quillane::TextFieldDrawing {

// `framed` fields lie on the page like a button; others are a soft ground without an edge.
void draw(QPainter& painter, const QRectF& rect, QStyle::State state, bool framed);

} // namespace quillane::TextFieldDrawing
