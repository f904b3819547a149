#include "DeadlineWait.h"
#include "Descriptor.h"
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <sys/event.h>

namespace quillane {

namespace {

constexpr uintptr_t kInterruptIdent = 1;
constexpr uintptr_t kTimerIdent = 2;

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

// False where the system has no timer to give.
bool setTimer(int queue, std::int64_t nanoseconds) {
    struct kevent timer;
    EV_SET(&timer, kTimerIdent, EVFILT_TIMER, EV_ADD | EV_ONESHOT, NOTE_NSECONDS | NOTE_MACH_CONTINUOUS_TIME,
           nanoseconds, nullptr);
    return ::kevent(queue, &timer, 1, nullptr, 0, nullptr) == 0;
}

} // namespace

// One kernel queue holds both the timer and the interrupt.
struct DeadlineWait::System {
    Descriptor queue{::kqueue()};
};

DeadlineWait::DeadlineWait()
    : m_system(std::make_unique<System>()) {
    struct kevent interrupt;
    EV_SET(&interrupt, kInterruptIdent, EVFILT_USER, EV_ADD | EV_CLEAR, 0, 0, nullptr);
    if (!m_system->queue || ::kevent(m_system->queue.get(), &interrupt, 1, nullptr, 0, nullptr) < 0) {
        std::abort(); // no timer would ever fire
    }
}

DeadlineWait::~DeadlineWait() = default;

// This system's monotonic clock goes on while the machine sleeps.
Instant DeadlineWait::instant() {
    return Instant(
        std::chrono::nanoseconds(static_cast<std::int64_t>(::clock_gettime_nsec_np(CLOCK_MONOTONIC_RAW))));
}

void DeadlineWait::wait(std::optional<Instant> deadline) {
    const int queue = m_system->queue.get();
    std::optional<timespec> longest; // none where the timer ends it
    if (!deadline) {
        struct kevent change;
        EV_SET(&change, kTimerIdent, EVFILT_TIMER, EV_DELETE, 0, 0, nullptr);
        (void)::kevent(queue, &change, 1, nullptr, 0, nullptr); // one that has fired is no longer there
    } else if (const auto left = std::max<std::int64_t>((*deadline - instant()).count(), 0);
               !setTimer(queue, left)) {
        longest = timespec{.tv_sec = static_cast<time_t>(left / kNanosecondsPerSecond),
                           .tv_nsec = static_cast<long>(left % kNanosecondsPerSecond)};
    }
    struct kevent fired;
    ::kevent(queue, nullptr, 0, &fired, 1, longest ? &*longest : nullptr);
}

void DeadlineWait::interrupt() {
    struct kevent trigger;
    EV_SET(&trigger, kInterruptIdent, EVFILT_USER, 0, NOTE_TRIGGER, 0, nullptr);
    while (::kevent(m_system->queue.get(), &trigger, 1, nullptr, 0, nullptr) < 0 && errno == EINTR) {
    }
}

} // namespace quillane
