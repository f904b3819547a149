#include "Sleep.h"
#include <utility>

namespace quillane {

Sleep::Sleep(const Platform& platform, Duration duration, StopToken stop)
    : Sleep(platform.tasks, platform.clock, duration, std::move(stop)) {}

Sleep::Sleep(TaskRunner& tasks, Clock& clock, Duration duration, StopToken stop)
    : m_tasks(tasks)
    , m_clock(clock)
    , m_duration(duration)
    , m_stop(std::move(stop))
    , m_state(std::make_shared<State>()) {}

Sleep::~Sleep() {
    m_state->resumption.close();
    if (m_timer) {
        m_clock.cancel(*m_timer);
    }
}

void Sleep::await_suspend(std::coroutine_handle<> waiting) {
    m_state->resumption.open(waiting);
    m_timer = m_clock.callAt(m_clock.instant() + m_duration, [state = m_state] {
        state->elapsed = true;
        state->resumption.resume();
    });
    m_onStop.emplace(m_stop, [this] {
        m_clock.cancel(*m_timer);
        m_tasks.post([state = m_state] { state->resumption.resume(); });
    });
}

} // namespace quillane
