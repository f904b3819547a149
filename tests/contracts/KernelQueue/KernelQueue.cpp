#include "Descriptor.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/epoll.h>
#include <sys/event.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>
#include <vector>

bool timersAreUsedUp = false;

namespace quillane {
namespace {

using Event = struct kevent;

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
constexpr std::uint32_t kInFolder = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;

// A folder that is open and watched. Its removal is seen from the folder above: as long as it is open Linux says
// nothing of it.
struct Folder {
    Event wanted;
    int watch = -1;
    int watchAbove = -1;
    dev_t device = 0;
    ino_t inode = 0;
    std::uint32_t happened = 0;
    bool isRemoved = false;

    // The queue forgets a descriptor that is closed.
    bool isOpen() const {
        struct stat status = {};
        return ::fstat(static_cast<int>(wanted.ident), &status) == 0 && status.st_dev == device &&
               status.st_ino == inode;
    }
    void note(std::uint32_t notes) { happened |= notes & wanted.fflags; }
    void lookWhetherRemoved() {
        struct stat status = {};
        if (!isRemoved && ::fstat(static_cast<int>(wanted.ident), &status) == 0 && status.st_nlink == 0) {
            isRemoved = true;
            note(NOTE_DELETE);
        }
    }
};

class Queue {
  public:
    int change(const Event& event) {
        switch (event.filter) {
        case EVFILT_USER:
            return changeUser(event);
        case EVFILT_TIMER:
            return changeTimer(event);
        case EVFILT_VNODE:
            return addFolder(event);
        default:
            return EINVAL;
        }
    }

    // Blocks until something has happened; with a longest time 0 when that is over.
    int wait(Event* events, int most, const timespec* longest) {
        const int milliseconds =
            longest == nullptr ? -1
                               : static_cast<int>(longest->tv_sec * 1000 + longest->tv_nsec / 1'000'000 + 1);
        for (;;) {
            std::array<pollfd, 3> waited{pollfd{m_changes.get(), POLLIN, 0}, pollfd{m_timer.get(), POLLIN, 0},
                                         pollfd{m_trigger.get(), POLLIN, 0}};
            const int happened = ::poll(waited.data(), waited.size(), milliseconds);
            if (happened <= 0) {
                return happened;
            }
            const std::lock_guard lock(m_mutex);
            int count = 0;
            if (waited[2].revents != 0 && m_user && count < most) {
                events[count++] = *m_user;
                takeTrigger();
            }
            if (waited[1].revents != 0 && m_timed && count < most) {
                events[count++] = *m_timed;
                disarm();
            }
            if (waited[0].revents != 0) {
                readChanges();
            }
            count = takeFolders(events, count, most);
            if (count > 0) {
                return count;
            }
        }
    }

  private:
    int changeUser(const Event& event) {
        const std::lock_guard lock(m_mutex);
        if ((event.flags & EV_ADD) != 0) {
            m_user = event;
        } else if (!m_user || m_user->ident != event.ident) {
            return ENOENT;
        }
        const std::uint64_t one = 1;
        return (event.fflags & NOTE_TRIGGER) == 0 || ::write(m_trigger.get(), &one, sizeof one) > 0 ? 0
                                                                                                    : errno;
    }
    void takeTrigger() {
        std::uint64_t count = 0;
        if ((m_user->flags & EV_CLEAR) != 0 && ::read(m_trigger.get(), &count, sizeof count) < 0) {
            m_user.reset();
        }
    }

    int changeTimer(const Event& event) {
        const std::lock_guard lock(m_mutex);
        if ((event.flags & EV_DELETE) != 0) {
            const bool wasSet = m_timed.has_value();
            disarm();
            return wasSet ? 0 : ENOENT;
        }
        if (timersAreUsedUp) {
            return ENOMEM;
        }
        if (event.fflags != (NOTE_NSECONDS | NOTE_MACH_CONTINUOUS_TIME) || event.data < 0) {
            return EINVAL;
        }
        const std::int64_t left = std::max<std::int64_t>(event.data, 1); // nothing would take it back
        itimerspec time{};
        time.it_value.tv_sec = left / kNanosecondsPerSecond;
        time.it_value.tv_nsec = left % kNanosecondsPerSecond;
        m_timed = event;
        return ::timerfd_settime(m_timer.get(), 0, &time, nullptr) == 0 ? 0 : errno;
    }
    void disarm() {
        const itimerspec never{};
        ::timerfd_settime(m_timer.get(), 0, &never, nullptr);
        m_timed.reset();
    }

    int addFolder(const Event& event) {
        const auto path = "/proc/self/fd/" + std::to_string(event.ident);
        Folder folder{.wanted = event};
        struct stat status = {};
        std::array<char, 4096> target{};
        if (::fstat(static_cast<int>(event.ident), &status) != 0 ||
            ::readlink(path.c_str(), target.data(), target.size() - 1) < 0) {
            return EBADF;
        }
        const std::string above(target.data(),
                                static_cast<std::size_t>(std::strrchr(target.data(), '/') - target.data()));
        folder.device = status.st_dev;
        folder.inode = status.st_ino;
        const std::lock_guard lock(m_mutex);
        folder.watch =
            ::inotify_add_watch(m_changes.get(), path.c_str(), kInFolder | IN_MOVE_SELF | IN_MASK_ADD);
        folder.watchAbove =
            ::inotify_add_watch(m_changes.get(), (above + "/").c_str(), kInFolder | IN_MASK_ADD);
        if (folder.watch < 0) {
            return errno;
        }
        m_folders.push_back(folder);
        return 0;
    }

    void readChanges() {
        alignas(inotify_event) std::array<char, std::size_t{64} << 10U> bytes;
        const auto length = ::read(m_changes.get(), bytes.data(), bytes.size());
        inotify_event event{};
        for (std::size_t at = 0; at + sizeof event <= static_cast<std::size_t>(std::max<ssize_t>(length, 0));
             at += sizeof event + event.len) {
            std::memcpy(&event, bytes.data() + at, sizeof event);
            for (auto& folder : m_folders) {
                tell(folder, event);
            }
        }
        std::erase_if(m_folders, [](const Folder& folder) { return !folder.isOpen(); });
    }
    static void tell(Folder& folder, const inotify_event& event) {
        const bool lostSome = (event.mask & IN_Q_OVERFLOW) != 0; // a queue of the Mac never does
        if (lostSome || (event.wd == folder.watch && (event.mask & kInFolder) != 0)) {
            folder.note(NOTE_WRITE);
        }
        if (event.wd == folder.watch && (event.mask & IN_MOVE_SELF) != 0) {
            folder.note(NOTE_RENAME);
        }
        if (event.wd == folder.watchAbove) {
            folder.lookWhetherRemoved();
        }
    }

    // One event for each folder, whatever happened in it.
    int takeFolders(Event* events, int count, int most) {
        for (auto& folder : m_folders) {
            if (folder.happened != 0 && count < most) {
                events[count] = folder.wanted;
                events[count++].fflags = std::exchange(folder.happened, 0);
            }
        }
        return count;
    }

    Descriptor m_changes{::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)};
    Descriptor m_timer{::timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK)};
    Descriptor m_trigger{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::mutex m_mutex; // guards what follows
    std::optional<Event> m_user;
    std::optional<Event> m_timed;
    std::vector<Folder> m_folders;
};

// The queues by their descriptors. One that was closed goes when its number is given to another.
class Queues {
  public:
    int add() {
        const int number = ::epoll_create1(EPOLL_CLOEXEC);
        const std::lock_guard lock(m_mutex);
        if (number >= 0) {
            m_queues[number] = std::make_shared<Queue>();
        }
        return number;
    }
    std::shared_ptr<Queue> at(int number) {
        const std::lock_guard lock(m_mutex);
        const auto found = m_queues.find(number);
        return found == m_queues.end() ? nullptr : found->second;
    }

  private:
    std::mutex m_mutex; // guards what follows
    std::map<int, std::shared_ptr<Queue>> m_queues;
};

Queues& queues() {
    static Queues all;
    return all;
}

} // namespace
} // namespace quillane

int kqueue() {
    return quillane::queues().add();
}

int kevent(int queue, const struct kevent* changes, int changeCount, struct kevent* events, int eventCount,
           const timespec* timeout) {
    const auto found = quillane::queues().at(queue);
    if (!found) {
        errno = EBADF;
        return -1;
    }
    for (int i = 0; i < changeCount; ++i) {
        if (const int error = found->change(changes[i])) {
            errno = error;
            return -1;
        }
    }
    return eventCount > 0 ? found->wait(events, eventCount, timeout) : 0;
}
