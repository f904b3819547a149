#include "Components/LibraryObserver.h"
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
            if (m_isScheduled) { // else it was drawn meanwhile
                renderNow();
            }
        },
        Qt::QueuedConnection);
}

} // namespace quillane
