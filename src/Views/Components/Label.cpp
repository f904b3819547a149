#include "Components/Label.h"
#include "Components/Fonts.h"
#include "Components/TabularText.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <cmath>

namespace quillane {

Label::Label(const QString& text, const TextStyle& style, QWidget* parent)
    : QLabel(parent)
    , m_style(style) {
    setTextFormat(Qt::PlainText);
    Fonts::follow(this, [this] { setFont(m_style.font()); });
    setText(text);
}

Label* Label::wrapped(const QString& text, const TextStyle& style, QWidget* parent) {
    auto* label = new Label(text, style, parent);
    label->setWordWrap(true);
    return label;
}

void Label::setTint(Tint tint) {
    m_style.tint = tint;
    update();
}

void Label::setTabular(bool tabular) {
    m_tabular = tabular;
    updateGeometry();
    update();
}

QSize Label::sizeHint() const {
    QSize size = QLabel::sizeHint();
    if (m_tabular) {
        size.setWidth(static_cast<int>(std::ceil(TabularText::width(QFontMetricsF(font()), text()))) + 1);
    }
    return size;
}

QSize Label::minimumSizeHint() const {
    return m_tabular ? sizeHint() : QLabel::minimumSizeHint();
}

// QLabel can draw its text in the colour of a palette's role only, and the palette has fewer roles than there
// are tints.
void Label::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(font());
    const QColor color = Tokens::current().tint(m_style.tint);
    painter.setPen(isEnabled() ? color : faded(color, 0.45));
    if (m_tabular) {
        TabularText::draw(painter, contentsRect(), text(), alignment());
        return;
    }
    const int flags = static_cast<int>(alignment()) | (wordWrap() ? Qt::TextWordWrap : 0);
    painter.drawText(contentsRect(), flags, text());
}

} // namespace quillane
