#include "Components/ValueField.h"
#include "Components/Fonts.h"
#include "Components/Tokens.h"
#include "Components/ToolTipText.h"
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace quillane {

ValueField::ValueField(const QString& value, QWidget* parent)
    : QLineEdit(value, parent) {
    setReadOnly(true);
    setFrame(false);
    setAlignment(Qt::AlignRight);
    setFocusPolicy(Qt::ClickFocus);
    Fonts::follow(this, [this] { setFont(Fonts::of(12.5)); });
    // QLineEdit keeps 2 pixels at either side; without them the value ends where the row does.
    setTextMargins(-2, 0, -2, 0);
    // Only this role is its own: all others follow the application.
    QPalette clear;
    clear.setColor(QPalette::Base, Qt::transparent);
    setPalette(clear);
    setCursorPosition(0);
}

void ValueField::setTint(Tint tint) {
    m_tint = tint;
    update();
}

bool ValueField::isElided() const {
    return fontMetrics().horizontalAdvance(text()) > rect().width();
}

QSize ValueField::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 2, QLineEdit::sizeHint().height()};
}

QSize ValueField::minimumSizeHint() const {
    return {30, sizeHint().height()};
}

void ValueField::paintEvent(QPaintEvent* event) {
    if (hasFocus()) {
        QLineEdit::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(Tokens::current().tint(m_tint));
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, rect().width() + 1);
    painter.drawText(rect(), static_cast<int>(alignment()) | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

bool ValueField::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const QString help = isElided() ? text() : QString();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), toolTipText(help), this);
        return true;
    }
    return QLineEdit::event(event);
}

void ValueField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) {
        deselect();
        setCursorPosition(0);
    }
}

} // namespace quillane
