#include "Components/Style/SpinBoxDrawing.h"
#include "Components/Fonts.h"
#include "Components/Style/ControlGround.h"
#include "Components/Style/TextFieldDrawing.h"
#include "Components/Tokens.h"
#include <QAbstractSpinBox>
#include <QPainter>
#include <QStyleOptionSpinBox>

namespace quillane {

namespace {

constexpr int kStepperWidth = 18;
constexpr double kStepperRadius = 5;

void drawArrow(const QStyleOptionSpinBox& option, QPainter& painter, QStyle::SubControl part,
               const QString& symbol, QAbstractSpinBox::StepEnabledFlag step) {
    const QColor& color = Tokens::current().text2;
    const bool can = (option.state & QStyle::State_Enabled) && (option.stepEnabled & step);
    ControlGround::drawChevron(painter, SpinBoxDrawing::partOf(option.rect, part).value_or(QRect()), symbol,
                               can ? color : faded(color, ControlGround::kDisabledShare));
}

} // namespace

std::optional<QRect> SpinBoxDrawing::partOf(const QRect& box, QStyle::SubControl part) {
    const int left = box.right() + 1 - kStepperWidth;
    const int half = box.height() / 2;
    switch (part) {
    case QStyle::SC_SpinBoxUp:
        return QRect(left, box.top() + 2, kStepperWidth, half - 2);
    case QStyle::SC_SpinBoxDown:
        return QRect(left, box.top() + half, kStepperWidth, half - 2);
    case QStyle::SC_SpinBoxEditField:
        return box.adjusted(8, 2, -kStepperWidth - 6, -2);
    case QStyle::SC_SpinBoxFrame:
        return box;
    default:
        return std::nullopt;
    }
}

QSize SpinBoxDrawing::sizeAround(const QSize& figure) {
    return {figure.width() + kStepperWidth + 14, Fonts::rowHeight(28)};
}

void SpinBoxDrawing::draw(const QStyleOptionSpinBox& option, QPainter& painter) {
    const QRect box = option.rect;
    painter.save();
    if (option.state & QStyle::State_HasFocus) {
        TextFieldDrawing::draw(painter, box.adjusted(0, 0, -kStepperWidth - 4, 0), option.state, true);
    }
    const ControlDress dress = ControlGround::normal(ControlCondition::of(option));
    const bool enabled = option.state & QStyle::State_Enabled;
    ControlGround::draw(
        painter, QRectF(box.right() + 1 - kStepperWidth, box.top() + 1, kStepperWidth, box.height() - 2),
        kStepperRadius, enabled ? Tokens::current().ctl : dress.ground, dress.edge);
    drawArrow(option, painter, QStyle::SC_SpinBoxUp, QStringLiteral("chevron.up"),
              QAbstractSpinBox::StepUpEnabled);
    drawArrow(option, painter, QStyle::SC_SpinBoxDown, QStringLiteral("chevron.down"),
              QAbstractSpinBox::StepDownEnabled);
    painter.restore();
}

} // namespace quillane
