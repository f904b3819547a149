#include "FolderEvents.h"
#include "Descriptor.h"
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/types.h>
#include <unistd.h>

namespace quillane {
namespace {

// What is made, removed or renamed one level below, and what becomes of the folder. The queue adds by itself that a
// watch has ended, that the volume has gone, and that it could not keep all.
constexpr std::uint32_t kMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF |
                                IN_MOVE_SELF | IN_ONLYDIR | IN_EXCL_UNLINK;

constexpr std::size_t kBufferBytes = std::size_t{64} << 10U;

FolderEvents::Happened eventsIn(const char* bytes, std::size_t length) {
    FolderEvents::Happened happened;
    inotify_event event{};
    for (std::size_t at = 0; at + sizeof event <= length; at += sizeof event + event.len) {
        std::memcpy(&event, bytes + at, sizeof event);
        if ((event.mask & IN_Q_OVERFLOW) != 0) {
            happened.anywhere = true;
        } else if (happened.marks.empty() || happened.marks.back() != event.wd) {
            happened.marks.push_back(event.wd);
        }
    }
    return happened;
}

} // namespace

struct FolderEvents::System {
    Descriptor queue{::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)};
    Descriptor interrupt{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::array<char, kBufferBytes> buffer{};

    // Tells whether the queue can be read; false when that will never be.
    bool waitForQueue() const {
        for (;;) {
            std::array<pollfd, 2> waited{pollfd{queue.get(), POLLIN, 0}, pollfd{interrupt.get(), POLLIN, 0}};
            if (::poll(waited.data(), waited.size(), -1) < 0) {
                if (errno == EINTR) {
                    continue;
                }
                return false;
            }
            return waited[1].revents == 0 && waited[0].revents == POLLIN;
        }
    }
};

FolderEvents::FolderEvents()
    : m_system(std::make_unique<System>()) {}

FolderEvents::~FolderEvents() = default;

std::optional<FolderEvents::Mark> FolderEvents::add(const std::string& path) {
    // Without the second nobody could end a wait.
    if (!m_system->queue || !m_system->interrupt || path.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    const int mark = ::inotify_add_watch(m_system->queue.get(), path.c_str(), kMask);
    return mark < 0 ? std::nullopt : std::optional(mark);
}

void FolderEvents::drop(Mark mark) {
    ::inotify_rm_watch(m_system->queue.get(), mark);
}

std::optional<FolderEvents::Happened> FolderEvents::wait() {
    while (m_system->waitForQueue()) {
        const auto length = ::read(m_system->queue.get(), m_system->buffer.data(), m_system->buffer.size());
        if (length > 0) {
            return eventsIn(m_system->buffer.data(), static_cast<std::size_t>(length));
        }
        if (length == 0 || (errno != EINTR && errno != EAGAIN)) {
            break;
        }
    }
    return std::nullopt;
}

void FolderEvents::interrupt() {
    const std::uint64_t one = 1;
    while (::write(m_system->interrupt.get(), &one, sizeof one) < 0 && errno == EINTR) {
    }
}

} // namespace quillane
