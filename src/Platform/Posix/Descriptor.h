#pragma once
#include <cerrno>
#include <unistd.h>
#include <utility>

namespace quillane {

// An open file descriptor that closes itself. Empty when it holds none.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int fd)
        : m_fd(fd) {}
    Descriptor(Descriptor&& other) noexcept
        : m_fd(std::exchange(other.m_fd, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            reset();
            m_fd = std::exchange(other.m_fd, -1);
        }
        return *this;
    }
    ~Descriptor() { reset(); }

    int get() const { return m_fd; }
    explicit operator bool() const { return m_fd >= 0; }
    // Closes now; an error of the close is ignored. errno stays: what failed before is what callers report.
    void reset() {
        if (m_fd >= 0) {
            const int before = errno;
            ::close(std::exchange(m_fd, -1));
            errno = before;
        }
    }
    // Gives the descriptor away without closing it.
    int release() { return std::exchange(m_fd, -1); }

  private:
    int m_fd = -1;
};

} // namespace quillane
