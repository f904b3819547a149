#include "Onboarding/Paragraph.h"
#include "Components/Fonts.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace quillane {

namespace {

// Lays the lines below each other, each in the middle of its `lineHeight`; answers how high they are.
double layLines(QTextLayout& layout, double width, double lineHeight) {
    QTextOption option(Qt::AlignHCenter);
    option.setWrapMode(QTextOption::WordWrap);
    layout.setTextOption(option);
    double height = 0;
    layout.beginLayout();
    for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, height + std::round((lineHeight - line.height()) / 2)});
        height += lineHeight;
    }
    layout.endLayout();
    return height;
}

} // namespace

Paragraph::Paragraph(const QString& text, const TextStyle& style, int lineHeight, QWidget* parent)
    : Label(text, style, parent)
    , m_lineHeight(lineHeight) {
    setWordWrap(true);
    setAlignment(Qt::AlignHCenter);
}

double Paragraph::lineHeight() const {
    return std::round(m_lineHeight * Fonts::scale());
}

int Paragraph::heightForWidth(int width) const {
    QTextLayout layout(text(), font());
    return static_cast<int>(std::ceil(layLines(layout, std::max(width, 1), lineHeight())));
}

QSize Paragraph::sizeHint() const {
    return {Label::minimumSizeHint().width(), heightForWidth(std::max(width(), 1))};
}

QSize Paragraph::minimumSizeHint() const {
    return {0, static_cast<int>(lineHeight())};
}

void Paragraph::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(Tokens::current().tint(tint()));
    QTextLayout layout(text(), font());
    layLines(layout, width(), lineHeight());
    layout.draw(&painter, {0, 0});
}

} // namespace quillane
