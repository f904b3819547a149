#pragma once
#include <coroutine>
#include <utility>

namespace quillane {

// A door through which a suspended coroutine is resumed, once. Shared by the awaiter, which closes it when
// its frame is destroyed, and by whoever completes what is awaited, so that a late completion finds nobody.
// Opened, closed and passed on the main thread only.
class Resumption {
  public:
    void open(std::coroutine_handle<> waiting) { m_waiting = waiting; }
    void close() { m_waiting = {}; }
    // Resumes whoever waits. Does nothing the second time or when the door is closed.
    void resume() {
        if (const auto waiting = std::exchange(m_waiting, {})) {
            waiting.resume();
        }
    }

  private:
    std::coroutine_handle<> m_waiting;
};

} // namespace quillane
