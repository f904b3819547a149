#include "WakePipe.h"
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace quillane {

WakePipe::WakePipe() {
    if (::pipe(m_ends.data()) != 0) {
        std::abort();
    }
    for (const int end : m_ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
}

WakePipe::~WakePipe() {
    for (const int end : m_ends) {
        ::close(end);
    }
}

// A full pipe is readable already, which is all that is wanted.
void WakePipe::wake(int writeEnd) {
    const int before = errno;
    while (::write(writeEnd, "", 1) < 0 && errno == EINTR) {
    }
    errno = before;
}

void WakePipe::empty() const {
    std::array<char, 64> bytes{};
    ssize_t count = 0;
    do {
        count = ::read(readEnd(), bytes.data(), bytes.size());
    } while (count > 0 || (count < 0 && errno == EINTR));
}

} // namespace quillane
