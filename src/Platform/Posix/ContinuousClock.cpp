#include "ContinuousClock.h"
#include <ctime>
#include <vector>

namespace quillane {

ContinuousClock::ContinuousClock(MainQueue& mainQueue)
    : m_mainQueue(mainQueue)
    , m_thread([this] { watch(); }) {}

ContinuousClock::~ContinuousClock() {
    m_stopping = true;
    m_wait.interrupt();
    m_thread.join();
    m_timers->clear();
}

Date ContinuousClock::now() const {
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return Date::fromUnix(time.tv_sec, time.tv_nsec);
}

Clock::TimerId ContinuousClock::callAt(Instant when, Job job) {
    const auto timer = ++m_lastTimer;
    m_timers->emplace(timer, Timer{when, std::move(job)});
    bool isEarliest = false;
    {
        const std::lock_guard lock(m_mutex);
        isEarliest = m_deadlines.emplace(when, timer).first == m_deadlines.begin();
    }
    if (isEarliest) {
        m_wait.interrupt();
    }
    return timer;
}

// The thread may be waiting for this very deadline: it then wakes once for nothing.
void ContinuousClock::cancel(TimerId timer) {
    const auto node = m_timers->extract(timer);
    if (node) {
        const std::lock_guard lock(m_mutex);
        m_deadlines.erase({node.mapped().when, timer});
    }
}

void ContinuousClock::watch() {
    while (!m_stopping) {
        m_wait.wait(fireDue());
    }
}

std::optional<Instant> ContinuousClock::fireDue() {
    const std::lock_guard lock(m_mutex);
    const auto present = instant();
    while (!m_deadlines.empty() && m_deadlines.begin()->first <= present) {
        const auto timer = m_deadlines.extract(m_deadlines.begin()).value().second;
        m_mainQueue.post([timers = m_timers, timer] {
            if (auto node = timers->extract(timer)) {
                node.mapped().job();
            }
        });
    }
    return m_deadlines.empty() ? std::nullopt : std::optional(m_deadlines.begin()->first);
}

} // namespace quillane
