#include "Components/ElidedLabel.h"
#include "Components/TabularText.h"
#include "Components/Tokens.h"
#include "Components/ToolTipText.h"
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace quillane {

ElidedLabel::ElidedLabel(const QString& text, const TextStyle& style, Qt::TextElideMode mode, QWidget* parent)
    : Label(text, style, parent)
    , m_mode(mode) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

bool ElidedLabel::isElided() const {
    return QFontMetricsF(font()).horizontalAdvance(text()) > contentsRect().width() + 0.5;
}

QSize ElidedLabel::minimumSizeHint() const {
    return {qMin(sizeHint().width(), fontMetrics().averageCharWidth() * 3), sizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(Tokens::current().tint(tint()));
    const QString shown =
        isElided() ? fontMetrics().elidedText(text(), m_mode, contentsRect().width()) : text();
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        const QString help = isElided() ? text() : QString();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), toolTipText(help), this);
        return true;
    }
    return Label::event(event);
}

} // namespace quillane
