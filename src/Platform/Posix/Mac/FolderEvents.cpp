#include "FolderEvents.h"
#include "Descriptor.h"
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <map>
#include <span>
#include <sys/event.h>
#include <utility>

namespace quillane {
namespace {

constexpr uintptr_t kInterruptIdent = 1;
constexpr std::size_t kEventsAtOnce = 64;

// One level of a folder, and what becomes of the folder; the last when its volume goes.
constexpr std::uint32_t kMask = NOTE_WRITE | NOTE_RENAME | NOTE_DELETE | NOTE_REVOKE;

} // namespace

// The descriptor of a folder is a number that the next folder may get, so the marks are counted instead. A kernel
// queue is not passed on to programs, and keeps one event for each folder, so that nothing is ever lost.
struct FolderEvents::System {
    Descriptor queue{::kqueue()};
    std::map<Mark, Descriptor> folders;
    Mark last = 0;

    bool change(uintptr_t ident, std::int16_t filter, std::uint16_t flags, std::uint32_t notes,
                Mark mark) const {
        struct kevent change;
        EV_SET(&change, ident, filter, flags, notes, 0,
               reinterpret_cast<void*>(static_cast<intptr_t>(mark))); // NOLINT(performance-no-int-to-ptr)
        int done = 0;
        do {
            done = ::kevent(queue.get(), &change, 1, nullptr, 0, nullptr);
        } while (done < 0 && errno == EINTR);
        return done == 0;
    }
};

FolderEvents::FolderEvents()
    : m_system(std::make_unique<System>()) {
    if (m_system->queue && !m_system->change(kInterruptIdent, EVFILT_USER, EV_ADD, 0, 0)) {
        m_system->queue.reset(); // nobody could end a wait
    }
}

FolderEvents::~FolderEvents() = default;

std::optional<FolderEvents::Mark> FolderEvents::add(const std::string& path) {
    if (!m_system->queue || path.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    Descriptor folder(::open(path.c_str(), O_EVTONLY | O_DIRECTORY | O_CLOEXEC));
    const Mark mark = m_system->last + 1;
    if (!folder || !m_system->change(static_cast<uintptr_t>(folder.get()), EVFILT_VNODE, EV_ADD | EV_CLEAR,
                                     kMask, mark)) {
        return std::nullopt;
    }
    m_system->last = mark;
    m_system->folders.emplace(mark, std::move(folder));
    return mark;
}

// Closing the folder takes it out of the queue.
void FolderEvents::drop(Mark mark) {
    m_system->folders.erase(mark);
}

std::optional<FolderEvents::Happened> FolderEvents::wait() {
    if (!m_system->queue) {
        return std::nullopt;
    }
    std::array<struct kevent, kEventsAtOnce> events;
    int count = 0;
    do {
        count = ::kevent(m_system->queue.get(), nullptr, 0, events.data(), static_cast<int>(events.size()),
                         nullptr);
    } while (count < 0 && errno == EINTR);
    if (count <= 0) {
        return std::nullopt;
    }
    Happened happened;
    for (const auto& event : std::span(events).first(static_cast<std::size_t>(count))) {
        if (event.filter == EVFILT_USER) {
            return std::nullopt;
        }
        happened.marks.push_back(static_cast<Mark>(reinterpret_cast<intptr_t>(event.udata)));
    }
    return happened;
}

void FolderEvents::interrupt() {
    m_system->change(kInterruptIdent, EVFILT_USER, 0, NOTE_TRIGGER, 0);
}

} // namespace quillane
