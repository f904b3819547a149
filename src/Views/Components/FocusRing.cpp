#include "FocusRing.h"
#include "Tokens.h"
#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QFocusFrame>
#include <QPainter>
#include <QWidget>

namespace quillane {

namespace {

bool wearsRing(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) != nullptr ||
           qobject_cast<const QComboBox*>(widget) != nullptr;
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

// Qt sets the attribute when the focus moves by keyboard and never takes it back, so a click does it here.
bool FocusRing::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && object->isWidgetType()) {
        QWidget* window = static_cast<QWidget*>(object)->window();
        if (window->testAttribute(Qt::WA_KeyboardFocusChange)) {
            window->setAttribute(Qt::WA_KeyboardFocusChange, false);
            follow(QApplication::focusWidget());
        }
    }
    return QObject::eventFilter(object, event);
}

void FocusRing::follow(QWidget* widget) {
    if (!wearsRing(widget) || !isShownFor(widget)) {
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
