#pragma once
#include <QColor>

class QPainter;
class QRectF;
class QStyleOption;
class QString;

namespace quillane {

// What a control is seen doing. One that is disabled is neither pressed nor hovered.
struct ControlCondition {
    bool enabled;
    bool pressed;
    bool hovered;

    static ControlCondition of(const QStyleOption& option);
};

// The colours of a control. Transparent: not drawn.
struct ControlDress {
    QColor ground = Qt::transparent;
    QColor edge = Qt::transparent;
    QColor words;
};

// What the drawings of several controls share. Colours are those of Tokens::current().
namespace ControlGround {

inline constexpr int kPressedPercent = 112; // 12 % darker
inline constexpr double kDisabledShare = 0.45;
inline constexpr double kFieldRadius = 7;

// The corners of a button or field of this height.
double radiusOf(int height);

// A ground of one colour, with white words.
ControlDress filled(const ControlCondition& is, const QColor& ground, const QColor& hovered);
// A framed ground like that of a button.
ControlDress framed(const ControlCondition& is, const QColor& words, const QColor& hovered,
                    const QColor& pressed);
// That of a button with no part to play, which other controls wear too.
ControlDress normal(const ControlCondition& is);

// Leaves pen, brush and hints changed.
void draw(QPainter& painter, const QRectF& rect, double radius, const QColor& ground, const QColor& edge);
// A menu arrow or a step arrow, centred.
void drawChevron(QPainter& painter, const QRectF& rect, const QString& symbol, const QColor& color);

} // namespace ControlGround

} // namespace quillane
