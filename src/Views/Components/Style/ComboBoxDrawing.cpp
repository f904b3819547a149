#include "Components/Style/ComboBoxDrawing.h"
#include "Components/Fonts.h"
#include "Components/Style/ControlGround.h"
#include <QPainter>
#include <QStyleOptionComboBox>

namespace quillane {

std::optional<QRect> ComboBoxDrawing::partOf(const QRect& box, QStyle::SubControl part) {
    switch (part) {
    case QStyle::SC_ComboBoxEditField:
        return box.adjusted(12, 1, -26, -1);
    case QStyle::SC_ComboBoxArrow:
        return QRect(box.right() - 23, box.top(), 14, box.height());
    default:
        return std::nullopt;
    }
}

QSize ComboBoxDrawing::sizeAround(const QSize& words) {
    return {words.width() + 44, Fonts::rowHeight(28)};
}

void ComboBoxDrawing::draw(const QStyleOptionComboBox& option, QPainter& painter) {
    const ControlDress dress = ControlGround::normal(ControlCondition::of(option));
    painter.save();
    ControlGround::draw(painter, option.rect, ControlGround::radiusOf(option.rect.height()), dress.ground,
                        dress.edge);
    ControlGround::drawChevron(painter, partOf(option.rect, QStyle::SC_ComboBoxArrow).value_or(QRect()),
                               QStringLiteral("chevron.down"), dress.words);
    painter.restore();
}

} // namespace quillane
