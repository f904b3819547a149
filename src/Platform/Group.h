#pragma once
#include "Outcome.h"
#include "Resumption.h"
#include "TaskRunner.h"
#include <coroutine>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace quillane {

// `co_await Group<T>(runner, priority, children)` runs all children side by side and goes on, on the main
// thread, when every one has ended: with their values in the order of completion, or by throwing the first
// exception among them. No children: goes on at once. Children own all they use, as in detached().
template <class T>
class [[nodiscard]] Group {
    struct State {
        Resumption resumption;
        std::mutex mutex; // guards what follows until the last child has ended
        std::vector<T> values;
        std::exception_ptr firstError;
        std::size_t running = 0;

        // True for the last one.
        bool finish(Outcome<T> outcome) {
            const std::lock_guard lock(mutex);
            try {
                values.push_back(outcome.take());
            } catch (...) {
                if (!firstError) {
                    firstError = std::current_exception();
                }
            }
            return --running == 0;
        }
    };

  public:
    using Child = std::function<T()>;

    Group(TaskRunner& runner, Priority priority, std::vector<Child> children)
        : m_runner(&runner)
        , m_priority(priority)
        , m_children(std::move(children))
        , m_state(std::make_shared<State>()) {}
    Group(const Group&) = delete; // stays where co_await finds it
    Group& operator=(const Group&) = delete;
    ~Group() { m_state->resumption.close(); }

    bool await_ready() const noexcept { return m_children.empty(); }
    void await_suspend(std::coroutine_handle<> waiting) {
        m_state->resumption.open(waiting);
        m_state->running = m_children.size();
        for (auto& child : std::exchange(m_children, {})) {
            m_runner->run(m_priority,
                          [state = m_state, runner = m_runner, child = std::move(child)]() mutable {
                              Outcome<T> outcome;
                              outcome.capture(child);
                              if (state->finish(std::move(outcome))) {
                                  runner->post([state = std::move(state)] { state->resumption.resume(); });
                              }
                          });
        }
    }
    std::vector<T> await_resume() {
        if (m_state->firstError) {
            std::rethrow_exception(m_state->firstError);
        }
        return std::move(m_state->values);
    }

  private:
    TaskRunner* m_runner;
    Priority m_priority;
    std::vector<Child> m_children;
    std::shared_ptr<State> m_state;
};

} // namespace quillane
