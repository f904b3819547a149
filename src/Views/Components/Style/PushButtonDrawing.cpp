#include "Components/Style/PushButtonDrawing.h"
#include "Components/Fonts.h"
#include "Components/PushButton.h"
#include "Components/Style/ControlGround.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <QStyleOptionButton>
#include <algorithm>
#include <cmath>

namespace quillane {

namespace {

// What a push button is: told by PushButton, else by the features of a plain QPushButton.
PushButton::Role roleOf(const QStyleOptionButton& option, const QWidget* widget) {
    if (const auto* button = qobject_cast<const PushButton*>(widget)) {
        return button->role();
    }
    if (option.features & QStyleOptionButton::DefaultButton) {
        return PushButton::Role::Filled;
    }
    return (option.features & QStyleOptionButton::Flat) ? PushButton::Role::Plain : PushButton::Role::Normal;
}

int heightOf(const QWidget* widget) {
    const auto* button = qobject_cast<const PushButton*>(widget);
    return static_cast<int>(button != nullptr ? button->buttonSize() : PushButton::Size::Regular);
}

// Between the symbol and the words.
int gapIn(int height) {
    return height >= 40 ? 8 : 7;
}

ControlDress plainDress(const ControlCondition& is) {
    const Tokens& tokens = Tokens::current();
    const QColor ground = is.pressed ? tokens.side : is.hovered ? tokens.fill : QColor(Qt::transparent);
    return {ground, Qt::transparent,
            is.enabled ? tokens.text2 : faded(tokens.text2, ControlGround::kDisabledShare)};
}

ControlDress destructiveDress(const ControlCondition& is) {
    const Tokens& tokens = Tokens::current();
    QColor pressed = tokens.redSoft;
    pressed.setAlphaF(std::min(1.0F, pressed.alphaF() * 1.6F));
    return ControlGround::framed(is, tokens.red, tokens.redSoft, pressed);
}

ControlDress dressOf(PushButton::Role role, const ControlCondition& is) {
    const Tokens& tokens = Tokens::current();
    switch (role) {
    case PushButton::Role::Filled:
        return ControlGround::filled(is, tokens.accent, tokens.accentHover);
    case PushButton::Role::Permanent:
        return ControlGround::filled(is, tokens.permanent, tokens.permanent.darker(108));
    case PushButton::Role::Destructive:
        return destructiveDress(is);
    case PushButton::Role::Plain:
        return plainDress(is);
    case PushButton::Role::Normal:
        break;
    }
    return ControlGround::normal(is);
}

void drawWords(const QStyleOptionButton& option, QPainter& painter, const QRectF& place) {
    const QString text = option.fontMetrics.elidedText(
        option.text, Qt::ElideRight, static_cast<int>(std::ceil(place.width())), Qt::TextShowMnemonic);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextHideMnemonic | Qt::TextSingleLine,
                     text);
}

// Symbol and words, together in the middle of `whole`.
void drawLabel(const QStyleOptionButton& option, QPainter& painter, const QRectF& whole) {
    const double words = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
    const double icon = option.icon.isNull() ? 0 : option.iconSize.width();
    const double gap = icon > 0 && words > 0 ? gapIn(option.rect.height()) : 0;
    const double left = std::max(whole.left() + 4, whole.center().x() - (icon + gap + words) / 2);
    if (icon > 0) {
        const double top = whole.center().y() - icon / 2;
        option.icon.paint(&painter, QRectF(std::round(left), std::round(top), icon, icon).toRect(),
                          Qt::AlignCenter,
                          (option.state & QStyle::State_Enabled) ? QIcon::Normal : QIcon::Disabled);
    }
    drawWords(option, painter,
              {left + icon + gap, whole.top(), whole.right() - left - icon - gap, whole.height()});
}

} // namespace

QSize PushButtonDrawing::sizeOf(const QStyleOptionButton& option, const QWidget* widget) {
    const int base = heightOf(widget);
    const bool small = base < 28;
    const int height = Fonts::rowHeight(base, small ? 12 : 13, small ? 6 : 12);
    if (option.text.isEmpty() && !option.icon.isNull()) {
        return {PushButton::kCompactWidth, height};
    }
    const int sides = base >= 40 ? 44 : base >= 32 ? 34 : small ? 18 : 24;
    int width = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width() + sides;
    if (!option.icon.isNull()) {
        width += option.iconSize.width() + gapIn(base);
    }
    return {width, height};
}

void PushButtonDrawing::draw(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget) {
    const ControlDress dress = dressOf(roleOf(option, widget), ControlCondition::of(option));
    const QRectF rect = option.rect;
    painter.save();
    ControlGround::draw(painter, rect, ControlGround::radiusOf(option.rect.height()), dress.ground,
                        dress.edge);
    if (widget != nullptr && qobject_cast<const PushButton*>(widget) == nullptr) {
        painter.setFont(widget->font()); // a PushButton has chosen its own
    }
    painter.setPen(dress.words);
    const bool menu = option.features & QStyleOptionButton::HasMenu;
    drawLabel(option, painter, rect.adjusted(0, 0, menu ? -16 : 0, 0));
    if (menu) {
        ControlGround::drawChevron(painter, {rect.right() - 21, rect.top(), 14, rect.height()},
                                   QStringLiteral("chevron.down"), dress.words);
    }
    painter.restore();
}

} // namespace quillane
