#pragma once
// What the Mac's watch of folders and its wait for a time take from its system, for a trial on another: kernel queues,
// by KernelQueue.cpp, over what Linux has. Only what those two sources ask for, by the rules of the Mac.
#include <cstdint>
#include <ctime>
#include <fcntl.h>

struct kevent {
    std::uintptr_t ident;
    std::int16_t filter;
    std::uint16_t flags;
    std::uint32_t fflags;
    std::intptr_t data;
    void* udata;
};

#define EV_SET(event, ident, filter, flags, fflags, data, udata)                                             \
    (*(event) = {static_cast<std::uintptr_t>(ident), static_cast<std::int16_t>(filter),                      \
                 static_cast<std::uint16_t>(flags), static_cast<std::uint32_t>(fflags),                      \
                 static_cast<std::intptr_t>(data), udata})

inline constexpr int EVFILT_VNODE = -4;
inline constexpr int EVFILT_TIMER = -7;
inline constexpr int EVFILT_USER = -10;
inline constexpr int EV_ADD = 0x1;
inline constexpr int EV_DELETE = 0x2;
inline constexpr int EV_ONESHOT = 0x10;
inline constexpr int EV_CLEAR = 0x20;
inline constexpr unsigned NOTE_DELETE = 0x1;
inline constexpr unsigned NOTE_WRITE = 0x2;
inline constexpr unsigned NOTE_RENAME = 0x20;
inline constexpr unsigned NOTE_REVOKE = 0x40;
inline constexpr unsigned NOTE_NSECONDS = 0x4;
inline constexpr unsigned NOTE_MACH_CONTINUOUS_TIME = 0x80;
inline constexpr unsigned NOTE_TRIGGER = 0x1000000;
inline constexpr int O_EVTONLY = O_RDONLY; // here it holds the volume

extern "C" int kqueue();
extern "C" int kevent(int queue, const struct kevent* changes, int changeCount, struct kevent* events,
                      int eventCount, const timespec* timeout);

// No timer can be set as long as this holds.
extern bool timersAreUsedUp;

inline std::uint64_t clock_gettime_nsec_np(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000'000U +
           static_cast<std::uint64_t>(time.tv_nsec);
}
