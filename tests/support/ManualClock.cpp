#include "ManualClock.h"

namespace quillane {

ManualClock::ManualClock(StepTaskRunner& runner, const std::string& timeZone)
    : m_runner(runner)
    , m_calendar(timeZone) {}

Clock::TimerId ManualClock::callAt(Instant when, Job job) {
    const auto timer = ++m_lastTimer;
    m_timers->emplace(timer, Timer{when, std::move(job)});
    m_deadlines.emplace(when, timer);
    while (fireNextBy(m_instant)) {
    }
    return timer;
}

void ManualClock::cancel(TimerId timer) {
    if (const auto node = m_timers->extract(timer)) {
        m_deadlines.erase({node.mapped().when, timer});
    }
}

void ManualClock::advance(Duration duration) {
    const auto end = m_instant + duration;
    m_runner.runAll();
    while (fireNextBy(end)) {
        m_runner.runAll();
    }
    moveTo(end);
}

void ManualClock::advanceWithoutRunning(Duration duration) {
    const auto end = m_instant + duration;
    while (fireNextBy(end)) {
    }
    moveTo(end);
}

void ManualClock::moveTo(Instant when) {
    if (when > m_instant) {
        m_now = m_now.addingSeconds(std::chrono::duration<double>(when - m_instant).count());
        m_instant = when;
    }
}

bool ManualClock::fireNextBy(Instant end) {
    if (m_deadlines.empty() || m_deadlines.begin()->first > end) {
        return false;
    }
    const auto [when, timer] = m_deadlines.extract(m_deadlines.begin()).value();
    moveTo(when);
    m_runner.post([timers = m_timers, id = timer] {
        if (auto node = timers->extract(id)) {
            node.mapped().job();
        }
    });
    return true;
}

} // namespace quillane
