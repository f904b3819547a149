#include "Components/Style/FocusFrameDrawing.h"
#include "Components/Style/CheckBoxDrawing.h"
#include "Components/Style/ControlGround.h"
#include "Components/Tokens.h"
#include <QCheckBox>
#include <QFocusFrame>
#include <QPainter>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QVariant>

namespace quillane {

namespace {

struct Shape {
    QRectF rect;
    double radius;
};

Shape shapeOf(const QWidget& control, const QStyle& style) {
    QStyleOptionButton option;
    option.initFrom(&control);
    if (qobject_cast<const QCheckBox*>(&control) != nullptr) {
        return {style.subElementRect(QStyle::SE_CheckBoxIndicator, &option, &control),
                CheckBoxDrawing::kRadius};
    }
    if (qobject_cast<const QRadioButton*>(&control) != nullptr) {
        const QRectF dot = style.subElementRect(QStyle::SE_RadioButtonIndicator, &option, &control);
        return {dot, dot.height() / 2};
    }
    const QVariant own = control.property("focusRadius");
    return {control.rect(), own.isValid() ? own.toDouble() : ControlGround::radiusOf(control.height())};
}

} // namespace

void FocusFrameDrawing::draw(QPainter& painter, const QFocusFrame& frame, const QStyle& style) {
    const QWidget* control = frame.widget();
    if (control == nullptr) {
        return;
    }
    const Shape shape = shapeOf(*control, style);
    constexpr double kHalf = kWidth / 2.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Tokens::current().ring, kWidth));
    painter.drawRoundedRect(shape.rect.translated(kWidth, kWidth).adjusted(-kHalf, -kHalf, kHalf, kHalf),
                            shape.radius + kHalf, shape.radius + kHalf);
    painter.restore();
}

} // namespace quillane
