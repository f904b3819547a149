#pragma once
#include "Clock.h"
#include "Platform.h"
#include "Resumption.h"
#include "StopToken.h"
#include "TaskRunner.h"
#include <coroutine>
#include <memory>
#include <optional>

namespace quillane {

// `co_await Sleep(platform, duration, stop)` goes on when that much time has passed on the continuous clock,
// with true, or soon after a stop was requested, with false. A duration of zero or less still waits for a
// later turn. Requesting the stop only posts the resumption and never resumes inside the request. Main
// thread only.
class [[nodiscard]] Sleep {
  public:
    Sleep(const Platform& platform, Duration duration, StopToken stop);
    Sleep(TaskRunner& tasks, Clock& clock, Duration duration, StopToken stop);
    Sleep(const Sleep&) = delete; // stays where co_await finds it
    Sleep& operator=(const Sleep&) = delete;
    ~Sleep();

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> waiting);
    bool await_resume() const noexcept { return m_state->elapsed; }

  private:
    struct State {
        Resumption resumption;
        bool elapsed = false;
    };

    TaskRunner& m_tasks;
    Clock& m_clock;
    Duration m_duration;
    StopToken m_stop;
    std::shared_ptr<State> m_state;
    std::optional<Clock::TimerId> m_timer;
    std::optional<StopCallback> m_onStop;
};

} // namespace quillane
