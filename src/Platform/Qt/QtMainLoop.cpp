#include "QtMainLoop.h"
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace quillane {

QtMainLoop::Pipe::Pipe() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        std::abort(); // the loop could never be woken
    }
    readEnd = ends[0];
    writeEnd = ends[1];
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
}

QtMainLoop::Pipe::~Pipe() {
    ::close(readEnd);
    ::close(writeEnd);
}

// A full pipe is readable already, which is all that is wanted.
void QtMainLoop::Pipe::write() const {
    while (::write(writeEnd, "", 1) < 0 && errno == EINTR) {
    }
}

void QtMainLoop::Pipe::empty() const {
    std::array<char, 64> bytes{};
    ssize_t count = 0;
    do {
        count = ::read(readEnd, bytes.data(), bytes.size());
    } while (count > 0 || (count < 0 && errno == EINTR));
}

QtMainLoop::QtMainLoop(MainQueue& queue)
    : m_queue(queue)
    , m_notifier(m_pipe.readEnd, QSocketNotifier::Read) {
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] {
        m_pipe.empty(); // before the drain: what is posted during it makes the pipe readable again
        m_queue.drainOnce();
    });
    m_queue.setWake([this] { m_pipe.write(); });
}

QtMainLoop::~QtMainLoop() {
    m_queue.setWake({});
}

} // namespace quillane
