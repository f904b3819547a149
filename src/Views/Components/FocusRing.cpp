#include "FocusRing.h"
#include "Tokens.h"
#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QFocusFrame>
#include <QLineEdit>
#include <QPainter>
#include <QWidget>

namespace quillane {

namespace {

bool wearsRing(const QWidget* widget) {
    return (qobject_cast<const QAbstractButton*>(widget) != nullptr ||
            qobject_cast<const QComboBox*>(widget) != nullptr) &&
           !widget->property("drawsFocusRing").toBool();
}

// Fields tell where typed letters go, so they wear the ring however the focus came.
bool isField(const QWidget* widget) {
    const auto* line = qobject_cast<const QLineEdit*>(widget);
    return (line != nullptr && line->hasFrame()) || qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
}

bool isByKeyboard(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

} // namespace

FocusRing::FocusRing(QObject* parent)
    : QObject(parent) {
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { follow(now); });
}

FocusRing::~FocusRing() {
    delete m_frame;
}

bool FocusRing::isShownFor(const QWidget* widget) {
    return widget != nullptr && widget->hasFocus() &&
           widget->window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

void FocusRing::drawInside(QPainter& painter, const QRectF& rect, double radius, double width) {
    painter.setPen(QPen(Tokens::current().ring, width));
    painter.setBrush(Qt::NoBrush);
    const double half = width / 2;
    painter.drawRoundedRect(rect.adjusted(half, half, -half, -half), radius - half, radius - half);
}

QWidget* FocusRing::target() const {
    return m_frame != nullptr ? m_frame->widget() : nullptr;
}

// Qt sets the attribute when Tab moves the focus. A shortcut that does counts too, and Qt never takes it back,
// so a click does that here.
bool FocusRing::eventFilter(QObject* object, QEvent* event) {
    if (!object->isWidgetType()) {
        return false;
    }
    if (event->type() == QEvent::FocusIn && isByKeyboard(static_cast<QFocusEvent*>(event)->reason())) {
        static_cast<QWidget*>(object)->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    }
    if (event->type() == QEvent::MouseButtonPress) {
        QWidget* window = static_cast<QWidget*>(object)->window();
        if (window->testAttribute(Qt::WA_KeyboardFocusChange)) {
            window->setAttribute(Qt::WA_KeyboardFocusChange, false);
            follow(QApplication::focusWidget());
        }
    }
    return false;
}

void FocusRing::follow(QWidget* widget) {
    if (!isField(widget) && !(wearsRing(widget) && isShownFor(widget))) {
        delete m_frame;
        if (widget != nullptr) {
            widget->update();
        }
        return;
    }
    if (m_frame == nullptr) {
        m_frame = new QFocusFrame;
    }
    m_frame->setWidget(widget);
}

} // namespace quillane
