#include "QtMainLoop.h"

namespace quillane {

QtMainLoop::QtMainLoop(MainQueue& queue)
    : m_queue(queue)
    , m_notifier(m_pipe.readEnd(), QSocketNotifier::Read) {
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] {
        m_pipe.empty(); // before the drain: what is posted during it makes the pipe readable again
        m_queue.drainOnce();
    });
    m_queue.setWake([this] { WakePipe::wake(m_pipe.writeEnd()); });
}

QtMainLoop::~QtMainLoop() {
    m_queue.setWake({});
}

} // namespace quillane
