#pragma once
#include <exception>
#include <type_traits>
#include <utility>
#include <variant>

namespace quillane {

// How a computation ended: its value, or the exception that left it. Empty until then.
// Filled on one thread and taken on another only when something else orders the two.
template <class T>
class Outcome {
    struct Nothing {};
    using Value = std::conditional_t<std::is_void_v<T>, Nothing, T>;
    static_assert(!std::is_reference_v<T>, "a result outlives what it would refer to: return a value");

  public:
    bool isEmpty() const { return m_state.index() == 0; }

    template <class... Args>
    void setValue(Args&&... args) {
        m_state.template emplace<1>(std::forward<Args>(args)...);
    }
    // NOLINTNEXTLINE(bugprone-exception-escape): to keep a pointer to an exception throws none
    void setError(std::exception_ptr error) noexcept { m_state.template emplace<2>(std::move(error)); }

    // Runs `computation` and keeps how it ended.
    template <class F>
    void capture(F& computation) noexcept {
        try {
            if constexpr (std::is_void_v<T>) {
                computation();
                setValue();
            } else {
                setValue(computation());
            }
        } catch (...) {
            setError(std::current_exception());
        }
    }

    // Moves the value out, or throws the exception. Requires !isEmpty(); call it once.
    T take() {
        if (m_state.index() == 2) {
            std::rethrow_exception(std::get<2>(m_state));
        }
        if constexpr (!std::is_void_v<T>) {
            return std::move(std::get<1>(m_state));
        }
    }

  private:
    std::variant<std::monostate, Value, std::exception_ptr> m_state;
};

} // namespace quillane
