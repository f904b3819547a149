#pragma once
#include "StopToken.h"
#include "Task.h"
#include "TaskHandle.h"
#include "TaskRunner.h"
#include <coroutine>
#include <cstddef>
#include <exception>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <utility>

namespace quillane {

// Owns root tasks. Its destructor asks all of them to stop and then destroys the frames that are still
// suspended, so that no coroutine outlives the object whose `this` it uses: make it the last member of that
// object. Main thread only. A task must not destroy its own scope. The runner must outlive the scope.
class TaskScope {
  public:
    // Gets what a task throws. Without it an exception that leaves a task ends the process.
    using OnError = std::function<void(std::exception_ptr)>;

    explicit TaskScope(TaskRunner& runner, OnError onError = {});
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;
    ~TaskScope();

    // Starts `body`, a callable from a StopToken to a Task<>, at a later turn; also when it is cancelled
    // before that. The callable is kept until the task has ended, so a lambda may capture.
    template <class F>
    TaskHandle start(F body) {
        return add(std::make_shared<RootOf<F>>(std::move(body)));
    }

    // The tasks that have not ended; one that has ended counts until the turn after its end.
    std::size_t count() const { return m_roots.size(); }

  private:
    // The coroutine that awaits one root task to its end.
    class Driver {
      public:
        struct promise_type {
            Driver get_return_object() noexcept {
                return Driver(std::coroutine_handle<promise_type>::from_promise(*this));
            }
            std::suspend_always initial_suspend() const noexcept { return {}; }
            std::suspend_always final_suspend() const noexcept { return {}; }
            void return_void() const noexcept {}
            [[noreturn]] void unhandled_exception() const noexcept { std::terminate(); }
        };

        explicit Driver(std::coroutine_handle<promise_type> handle)
            : m_handle(handle) {}
        Driver(Driver&& other) noexcept
            : m_handle(std::exchange(other.m_handle, {})) {}
        Driver& operator=(Driver&&) = delete;
        ~Driver() {
            if (m_handle) {
                m_handle.destroy();
            }
        }
        void resume() const { m_handle.resume(); }

      private:
        std::coroutine_handle<promise_type> m_handle;
    };

    struct Root {
        virtual ~Root() = default;
        virtual Task<> make() = 0;
        StopSource stop;
        std::optional<Driver> driver; // set when the task begins
        std::list<std::shared_ptr<Root>>::iterator position;
    };

    template <class F>
    struct RootOf final : Root {
        explicit RootOf(F function)
            : body(std::move(function)) {}
        ~RootOf() override { this->driver.reset(); } // the frame goes before the captures that it uses
        Task<> make() override { return body(this->stop.token()); }
        F body;
    };

    TaskHandle add(const std::shared_ptr<Root>& root);
    void begin(Root& root);
    void finish(Root& root);
    static Driver drive(TaskScope& scope, Root& root);

    TaskRunner& m_runner;
    OnError m_onError;
    std::list<std::shared_ptr<Root>> m_roots;
};

} // namespace quillane
