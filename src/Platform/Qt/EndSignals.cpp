#include "EndSignals.h"
#include <array>
#include <atomic>
#include <csignal>
#include <utility>

namespace quillane {
namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};

// A handler is a plain function: what it needs stands here.
std::atomic<int> writeEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free, "a handler waits for nobody");

extern "C" void quillaneHearSignal(int /*signal*/) {
    WakePipe::wake(writeEnd.load());
}

} // namespace

EndSignals::EndSignals(std::function<void()> asked)
    : m_notifier(m_pipe.readEnd(), QSocketNotifier::Read) {
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this, asked = std::move(asked)] {
        m_pipe.empty();
        asked();
    });
    writeEnd = m_pipe.writeEnd();
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
