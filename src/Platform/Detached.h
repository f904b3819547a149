#pragma once
#include "Outcome.h"
#include "Resumption.h"
#include "TaskRunner.h"
#include <coroutine>
#include <memory>
#include <type_traits>
#include <utility>

namespace quillane {

// What detached() awaits.
template <class F>
class [[nodiscard]] Detached {
    using Value = std::invoke_result_t<F&>;
    struct State {
        explicit State(F function)
            : job(std::move(function)) {}
        Resumption resumption;
        F job;
        Outcome<Value> outcome;
    };

  public:
    Detached(TaskRunner& runner, Priority priority, F job)
        : m_runner(&runner)
        , m_priority(priority)
        , m_state(std::make_shared<State>(std::move(job))) {}
    Detached(const Detached&) = delete; // stays where co_await finds it
    Detached& operator=(const Detached&) = delete;
    ~Detached() { m_state->resumption.close(); }

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> waiting) {
        m_state->resumption.open(waiting);
        m_runner->run(m_priority, [state = m_state, runner = m_runner]() mutable {
            state->outcome.capture(state->job);
            runner->post([state = std::move(state)] { state->resumption.resume(); });
        });
    }
    Value await_resume() { return m_state->outcome.take(); }

  private:
    TaskRunner* m_runner;
    Priority m_priority;
    std::shared_ptr<State> m_state;
};

// `co_await detached(runner, priority, job)` runs the job on a pool and goes on with its value on the main
// thread, at a later turn. What the job throws is thrown there. The job must own all it uses: it may run, or
// be dropped by a runner that stops, after the coroutine is gone. Await it from the main thread, as a full
// statement or as the whole initialiser of a local.
template <class F>
Detached<std::decay_t<F>> detached(TaskRunner& runner, Priority priority, F&& job) {
    return {runner, priority, std::forward<F>(job)};
}

} // namespace quillane
