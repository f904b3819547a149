#include "Components/Style/ControlGround.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <QStyleOption>
#include <cmath>

namespace quillane {

ControlCondition ControlCondition::of(const QStyleOption& option) {
    const bool enabled = option.state & QStyle::State_Enabled;
    return {enabled, enabled && (option.state & (QStyle::State_Sunken | QStyle::State_On)),
            enabled && (option.state & QStyle::State_MouseOver)};
}

namespace ControlGround {

double radiusOf(int height) {
    return height >= 40 ? 10 : height >= 32 ? 8 : height <= 24 ? 6 : kFieldRadius;
}

ControlDress filled(const ControlCondition& is, const QColor& ground, const QColor& hovered) {
    const Tokens& tokens = Tokens::current();
    if (!is.enabled) {
        return {tokens.fill, Qt::transparent, tokens.text3};
    }
    return {is.pressed   ? hovered.darker(kPressedPercent)
            : is.hovered ? hovered
                         : ground,
            Qt::transparent, Qt::white};
}

ControlDress framed(const ControlCondition& is, const QColor& words, const QColor& hovered,
                    const QColor& pressed) {
    const Tokens& tokens = Tokens::current();
    if (!is.enabled) {
        return {faded(tokens.ctl, kDisabledShare), faded(tokens.ctlLine, kDisabledShare),
                faded(words, kDisabledShare)};
    }
    return {is.pressed ? pressed : is.hovered ? hovered : tokens.ctl, tokens.ctlLine, words};
}

ControlDress normal(const ControlCondition& is) {
    const Tokens& tokens = Tokens::current();
    return framed(is, tokens.text, tokens.alt, tokens.line2);
}

void draw(QPainter& painter, const QRectF& rect, double radius, const QColor& ground, const QColor& edge) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(ground);
    if (edge.alpha() == 0) {
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(rect, radius, radius);
    } else {
        painter.setPen(edge);
        painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
    }
}

void drawChevron(QPainter& painter, const QRectF& rect, const QString& symbol, const QColor& color) {
    constexpr double kSide = 10;
    Symbols::draw(painter,
                  {std::round(rect.center().x() - kSide / 2), std::round(rect.center().y() - kSide / 2)},
                  kSide, symbol, color);
}

} // namespace ControlGround

} // namespace quillane
