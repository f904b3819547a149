#pragma once
#include <cstdint>

// What system calls take that libc does not wrap, in words of our own. The kernel's headers are C, and not each
// of them stays C++: a parameter that an update of them named "class" once broke the build. The values are
// part of the kernel's binary interface and never change.
namespace quillane::KernelCalls {

// The argument of openat2, `struct open_how`.
struct OpenHow {
    std::uint64_t flags = 0;
    std::uint64_t mode = 0;
    std::uint64_t resolve = 0;
};

// RESOLVE_IN_ROOT: absolute paths, links and ".." stay below the folder that is given.
inline constexpr std::uint64_t kResolveInRoot = 0x10;

// ioprio_set and ioprio_get: what the second argument counts (IOPRIO_WHO_PROCESS; a thread counts as one), and
// the class of the disk that is served when nobody else asks (IOPRIO_CLASS_IDLE) in the bits where it stands.
inline constexpr int kOneThread = 1;
inline constexpr int kIdleDiskClass = 3;
inline constexpr int kDiskClassShift = 13;

} // namespace quillane::KernelCalls
