#include "EndSignals.h"
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};

// A handler is a plain function: what it needs stands here.
std::atomic<int> writeEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free, "a handler waits for nobody");

extern "C" void quillaneHearSignal(int /*signal*/) {
    const int before = errno;
    (void)::write(writeEnd.load(), "", 1); // a full pipe is readable already
    errno = before;
}

} // namespace

EndSignals::Pipe::Pipe() {
    if (::pipe(ends.data()) != 0) {
        std::abort(); // as where the main loop can't have its own
    }
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
}

EndSignals::Pipe::~Pipe() {
    ::close(ends[0]);
    ::close(ends[1]);
}

EndSignals::EndSignals(std::function<void()> asked)
    : m_notifier(m_pipe.ends[0], QSocketNotifier::Read) {
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier,
                     [end = m_pipe.ends[0], asked = std::move(asked)] {
                         std::array<char, 8> bytes{};
                         while (::read(end, bytes.data(), bytes.size()) > 0) {
                         }
                         asked();
                     });
    writeEnd = m_pipe.ends[1];
    for (const int signal : kSignals) {
        struct sigaction action = {};
        if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
            continue;
        }
        action = {};
        action.sa_handler = quillaneHearSignal;
        action.sa_flags =
            static_cast<int>(static_cast<unsigned>(SA_RESTART) | static_cast<unsigned>(SA_RESETHAND));
        ::sigaction(signal, &action, nullptr);
    }
}

EndSignals::~EndSignals() {
    for (const int signal : kSignals) {
        struct sigaction action = {};
        if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == quillaneHearSignal) {
            action = {};
            action.sa_handler = SIG_DFL;
            ::sigaction(signal, &action, nullptr);
        }
    }
    writeEnd = -1;
}

} // namespace quillane
