#pragma once
#include <cstddef>
#include <functional>
#include <string_view>

namespace quillane {

// One call for files that the code under test makes of the system.
struct SystemCall {
    std::string_view name;         // "openat"
    std::string_view path;         // as it was handed over; empty for calls on what is open
    bool mayChange = false;        // what lies on the disk
    std::size_t* length = nullptr; // of a write: may be made less, and then less is written
};

// Sees each such call of this program while it lives, so that the adapters under test are those of the product
// as they are. Calls from inside shared libraries are not seen. One at a time; made and ended while no other
// thread makes calls.
class SystemCallWatch {
  public:
    // Asked before each call, on its thread: the errno with which the call fails without being made; 0 to go on.
    using Before = std::function<int(const SystemCall&)>;
    // Told after each call that was made.
    using After = std::function<void(const SystemCall&, bool succeeded)>;

    explicit SystemCallWatch(Before before, After after = nullptr);
    ~SystemCallWatch();
    SystemCallWatch(const SystemCallWatch&) = delete;
    SystemCallWatch& operator=(const SystemCallWatch&) = delete;

    int before(const SystemCall& call) const { return m_before ? m_before(call) : 0; }
    void after(const SystemCall& call, bool succeeded) const {
        if (m_after) {
            m_after(call, succeeded);
        }
    }

  private:
    const Before m_before;
    const After m_after;
};

} // namespace quillane
