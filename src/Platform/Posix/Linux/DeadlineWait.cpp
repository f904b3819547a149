#include "DeadlineWait.h"
#include "Descriptor.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace quillane {

namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

// Absolute; what lies at or before the clock's zero is the first moment that arms the timer at all.
itimerspec armedFor(Instant deadline) {
    const auto nanoseconds = std::max<std::int64_t>(deadline.time_since_epoch().count(), 1);
    itimerspec spec{};
    spec.it_value.tv_sec = nanoseconds / kNanosecondsPerSecond;
    spec.it_value.tv_nsec = nanoseconds % kNanosecondsPerSecond;
    return spec;
}

// Without these two no timer would ever fire: the process can't go on.
int required(int descriptor) {
    if (descriptor < 0) {
        std::abort();
    }
    return descriptor;
}

} // namespace

// A timer descriptor rather than a condition variable: those don't know a clock that counts sleep.
struct DeadlineWait::System {
    Descriptor timer{required(::timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK))};
    Descriptor interrupt{required(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))};
};

DeadlineWait::DeadlineWait()
    : m_system(std::make_unique<System>()) {}

DeadlineWait::~DeadlineWait() = default;

Instant DeadlineWait::instant() {
    timespec time{};
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    return Instant(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

void DeadlineWait::wait(std::optional<Instant> deadline) {
    const itimerspec spec = deadline ? armedFor(*deadline) : itimerspec{}; // zero disarms
    ::timerfd_settime(m_system->timer.get(), TFD_TIMER_ABSTIME, &spec, nullptr);
    std::array<pollfd, 2> waited{pollfd{m_system->timer.get(), POLLIN, 0},
                                 pollfd{m_system->interrupt.get(), POLLIN, 0}};
    if (::poll(waited.data(), waited.size(), -1) < 0) {
        return;
    }
    std::uint64_t count = 0;
    while (::read(m_system->interrupt.get(), &count, sizeof count) < 0 && errno == EINTR) {
    }
}

void DeadlineWait::interrupt() {
    const std::uint64_t one = 1;
    while (::write(m_system->interrupt.get(), &one, sizeof one) < 0 && errno == EINTR) {
    }
}

} // namespace quillane
