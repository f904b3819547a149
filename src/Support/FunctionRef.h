#pragma once
#include <memory>
#include <type_traits>
#include <utility>

namespace quillane {

template <class Signature>
class FunctionRef;

// A callable that the callee uses only during the call. Does not own it and never allocates.
template <class R, class... Args>
class FunctionRef<R(Args...)> {
  public:
    template <class F>
        requires(!std::is_same_v<std::remove_cvref_t<F>, FunctionRef> &&
                 std::is_invocable_r_v<R, F&, Args...>)
    FunctionRef(F&& f) // NOLINT(google-explicit-constructor,bugprone-forwarding-reference-overload)
        : m_object(const_cast<void*>(static_cast<const void*>(std::addressof(f))))
        , m_call([](void* object, Args... args) -> R {
            return (*static_cast<std::remove_reference_t<F>*>(object))(std::forward<Args>(args)...);
        }) {}
    R operator()(Args... args) const { return m_call(m_object, std::forward<Args>(args)...); }

  private:
    void* m_object;
    R (*m_call)(void*, Args...);
};

} // namespace quillane
