#include "Components/FittedLabel.h"
#include "Components/Fonts.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

FittedLabel::FittedLabel(const QString& text, const TextStyle& style, double smallest, QWidget* parent)
    : ElidedLabel(text, style, Qt::ElideRight, parent)
    , m_smallest(smallest) {}

QSize FittedLabel::sizeHint() const {
    return Label::sizeHint();
}

double FittedLabel::fittedSize() const {
    constexpr double kStep = 0.5;
    double px = textStyle().px;
    while (px > m_smallest) {
        const QFont font = Fonts::of(px, textStyle().weight, textStyle().tracking);
        if (QFontMetricsF(font).horizontalAdvance(text()) <= contentsRect().width() + 0.5) {
            return px;
        }
        px -= kStep;
    }
    return m_smallest;
}

void FittedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(Fonts::of(fittedSize(), textStyle().weight, textStyle().tracking));
    painter.setPen(Tokens::current().tint(tint()));
    const QString shown =
        QFontMetrics(painter.font()).elidedText(text(), Qt::ElideRight, contentsRect().width() + 1);
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

} // namespace quillane
