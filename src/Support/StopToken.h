#pragma once
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace quillane {

// A request to stop, after std::stop_token, which Apple's standard library does not have.
// Asking is cooperative: work that should stop looks at its token now and then.
class StopToken {
  public:
    // A token that is never asked to stop.
    StopToken() = default;

    // Any thread. One atomic read: cheap enough for every step of a walk.
    bool stopRequested() const { return m_state && m_state->requested.load(std::memory_order_acquire); }

    // Whether anybody can ever ask: false for a token of no source.
    bool stopPossible() const { return m_state != nullptr; }

    // Who may ask, without keeping anything of it: by this what is stopped together is known as one piece of work.
    // Expires with the last token and source. Equal are two of which neither is owner_before() the other.
    std::weak_ptr<const void> identity() const { return m_state; }

  private:
    friend class StopSource;
    friend class StopCallback;
    struct State {
        std::atomic<bool> requested = false;
        std::mutex mutex; // guards the list
        std::vector<std::pair<const void*, std::function<void()>>> callbacks;
    };
    explicit StopToken(std::shared_ptr<State> state)
        : m_state(std::move(state)) {}
    std::shared_ptr<State> m_state;
};

// The side that asks. Copies share one request.
class StopSource {
  public:
    StopSource()
        : m_state(std::make_shared<StopToken::State>()) {}

    StopToken token() const { return StopToken(m_state); }
    bool stopRequested() const { return m_state->requested.load(std::memory_order_acquire); }
    // Runs the callbacks in the order of their making, on this thread, the first time; does nothing again.
    // A callback may make callbacks (they run at once) and destroy any (those that have not run never do).
    void requestStop() const;

  private:
    std::shared_ptr<StopToken::State> m_state;
};

// Calls `function` once when stop is requested, or at once when it already was. Destroying it takes the
// function back. Made, destroyed and triggered on one thread (the main thread).
class StopCallback {
  public:
    StopCallback(const StopToken& token, std::function<void()> function);
    ~StopCallback();
    StopCallback(const StopCallback&) = delete;
    StopCallback& operator=(const StopCallback&) = delete;

  private:
    std::shared_ptr<StopToken::State> m_state; // null when there is nothing to take back
};

} // namespace quillane
