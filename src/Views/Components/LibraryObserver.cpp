#include "Components/LibraryObserver.h"
#include <QEvent>
#include <utility>

namespace quillane {

LibraryObserver::LibraryObserver(std::function<void()> render, QObject* parent)
    : QObject(parent)
    , m_render(std::move(render)) {}

void LibraryObserver::renderNow() {
    m_isScheduled = false;
    const Tracking tracking(*this);
    m_render();
}

void LibraryObserver::schedule() {
    if (std::exchange(m_isScheduled, true)) {
        return;
    }
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_isScheduled && !isOutOfSight()) { // else it was drawn meanwhile, or is when it comes
                renderNow();
            }
        },
        Qt::QueuedConnection);
}

void LibraryObserver::drawOnlyInSight(QWidget* screen) {
    m_screen = screen;
    screen->installEventFilter(this);
}

bool LibraryObserver::isOutOfSight() const {
    return m_screen && !m_screen->isVisible() && m_screen->window()->isVisible();
}

bool LibraryObserver::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Show && m_isScheduled) {
        renderNow();
    }
    return QObject::eventFilter(object, event);
}

} // namespace quillane
