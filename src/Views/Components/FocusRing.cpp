#include "Components/FocusRing.h"
#include "Components/Tokens.h"
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QFocusFrame>
#include <QKeyEvent>
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

void strokeInside(QPainter& painter, const QRectF& rect, double radius, const QPen& pen) {
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const double half = pen.widthF() / 2;
    painter.drawRoundedRect(rect.adjusted(half, half, -half, -half), radius - half, radius - half);
}

// Lists draw their focus in the viewport, which an update of the widget leaves out.
void repaint(QWidget* widget) {
    widget->update();
    if (auto* const area = qobject_cast<QAbstractScrollArea*>(widget)) {
        area->viewport()->update();
    }
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
    strokeInside(painter, rect, radius, QPen(Tokens::current().ring, width));
}

void FocusRing::drawOnSelection(QPainter& painter, const QRectF& rect, double radius) {
    constexpr double kGap = 2; // of the selection's own colour, all round
    strokeInside(painter, rect.adjusted(kGap, kGap, -kGap, -kGap), radius - kGap, QPen(Qt::white, 2));
}

bool FocusRing::movesCursor(int key) {
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return true;
    default:
        return false;
    }
}

QWidget* FocusRing::target() const {
    return m_frame != nullptr ? m_frame->widget() : nullptr;
}

// Qt sets the attribute when Tab moves the focus. A shortcut that does counts too, and Qt never takes it back,
// so a click does that here. After a click the arrows still move inside a list, so they bring it back.
bool FocusRing::eventFilter(QObject* object, QEvent* event) {
    if (!object->isWidgetType()) {
        return false;
    }
    if (event->type() == QEvent::FocusIn && isByKeyboard(static_cast<QFocusEvent*>(event)->reason())) {
        static_cast<QWidget*>(object)->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    }
    if (event->type() == QEvent::KeyPress && qobject_cast<QAbstractItemView*>(object) != nullptr &&
        movesCursor(static_cast<QKeyEvent*>(event)->key())) {
        setByKeyboard(static_cast<QWidget*>(object)->window(), true);
    }
    if (event->type() == QEvent::MouseButtonPress) {
        setByKeyboard(static_cast<QWidget*>(object)->window(), false);
    }
    return false;
}

void FocusRing::setByKeyboard(QWidget* window, bool on) {
    if (window->testAttribute(Qt::WA_KeyboardFocusChange) != on) {
        window->setAttribute(Qt::WA_KeyboardFocusChange, on);
        follow(QApplication::focusWidget());
    }
}

void FocusRing::follow(QWidget* widget) {
    if (!isField(widget) && !(wearsRing(widget) && isShownFor(widget))) {
        delete m_frame;
        if (widget != nullptr) {
            repaint(widget);
        }
        return;
    }
    if (m_frame == nullptr) {
        m_frame = new QFocusFrame;
    }
    m_frame->setWidget(widget);
}

} // namespace quillane
