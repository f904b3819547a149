#pragma once
#include "SystemCalls.h"
#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

namespace quillane {

// What the system says when it can't.
inline constexpr int kErrors[] = {EACCES, EPERM, ENOENT, ENOSPC, EIO, EXDEV, EROFS, EMFILE, EEXIST};

inline bool isRefusal(int error) {
    return error == EACCES || error == EPERM;
}

// Counts the calls and lets one of them fail, while it lives.
class FailingCall {
  public:
    // The call that fails, counted from 0; none by default.
    explicit FailingCall(int failing = -1, int error = 0)
        : m_watch([this, failing, error](const SystemCall& call) {
            const bool fails = m_count++ == failing;
            if (!call.path.empty()) {
                m_lastPath = call.path;
            }
            if (fails) {
                name = call.name;
                path = m_lastPath;
            }
            return fails ? error : 0;
        }) {}

    int count() const { return m_count; }
    std::string describe(int error) const {
        return name + " \"" + path + "\" fails with \"" + std::strerror(error) + "\""; // NOLINT: one thread
    }

    // Of the call that failed; empty before. For a call on what is open the path that was named last.
    std::string name;
    std::string path;

  private:
    std::string m_lastPath;
    int m_count = 0;
    SystemCallWatch m_watch;
};

} // namespace quillane
