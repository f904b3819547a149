#include "SystemCalls.h"
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl50-cpp): the linker sets these names, the system their form.
extern "C" {
int __real_open(const char* path, int flags, ...);
int __real_openat(int folder, const char* path, int flags, ...);
int __real_stat(const char* path, struct stat* status);
int __real_lstat(const char* path, struct stat* status);
int __real_fstat(int fd, struct stat* status);
int __real_fstatat(int folder, const char* path, struct stat* status, int flags);
int __real_statx(int folder, const char* path, int flags, unsigned int mask, struct statx* status);
int __real_mkdir(const char* path, mode_t mode);
int __real_mkdirat(int folder, const char* path, mode_t mode);
int __real_renameat(int fromFolder, const char* from, int toFolder, const char* to);
int __real_renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags);
ssize_t __real_read(int fd, void* bytes, size_t length);
ssize_t __real_write(int fd, const void* bytes, size_t length);
ssize_t __real_pwrite(int fd, const void* bytes, size_t length, off_t offset);
int __real_fsync(int fd);
int __real_ftruncate(int fd, off_t length);
int __real_unlinkat(int folder, const char* path, int flags);
int __real_flock(int fd, int operation);
long __real_syscall(long number, ...);
}

namespace quillane {
namespace {

std::atomic<const SystemCallWatch*> theWatch = nullptr;
// What a watch calls itself is not seen.
thread_local bool isWatching = false;

template <class Work>
auto unseen(Work work) {
    isWatching = true;
    const auto result = work();
    isWatching = false;
    return result;
}

// Makes the call unless the watch has it fail.
template <class Make>
auto watched(const SystemCall& call, Make make) -> decltype(make()) {
    const auto* watch = theWatch.load();
    if (watch == nullptr || isWatching) {
        return make();
    }
    if (const int error = unseen([&] { return watch->before(call); }); error != 0) {
        errno = error;
        return -1;
    }
    const auto result = make();
    const int error = errno;
    unseen([&] {
        watch->after(call, result >= 0);
        return 0;
    });
    errno = error;
    return result;
}

bool makesFiles(int flags) {
    return (flags & O_CREAT) != 0;
}

} // namespace

SystemCallWatch::SystemCallWatch(Before before, After after)
    : m_before(std::move(before))
    , m_after(std::move(after)) {
    if (theWatch.exchange(this) != nullptr) {
        std::abort(); // two watches would not know whose call it is
    }
}

SystemCallWatch::~SystemCallWatch() {
    theWatch = nullptr;
}

} // namespace quillane

using quillane::SystemCall;
using quillane::watched;

extern "C" {

int __wrap_open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const auto mode = quillane::makesFiles(flags) ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return watched({"open", path, quillane::makesFiles(flags)},
                   [&] { return __real_open(path, flags, mode); });
}

int __wrap_openat(int folder, const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const auto mode = quillane::makesFiles(flags) ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return watched({"openat", path, quillane::makesFiles(flags)},
                   [&] { return __real_openat(folder, path, flags, mode); });
}

int __wrap_stat(const char* path, struct stat* status) {
    return watched({"stat", path}, [&] { return __real_stat(path, status); });
}

int __wrap_lstat(const char* path, struct stat* status) {
    return watched({"lstat", path}, [&] { return __real_lstat(path, status); });
}

int __wrap_fstat(int fd, struct stat* status) {
    return watched({"fstat", {}}, [&] { return __real_fstat(fd, status); });
}

int __wrap_fstatat(int folder, const char* path, struct stat* status, int flags) {
    return watched({"fstatat", path}, [&] { return __real_fstatat(folder, path, status, flags); });
}

int __wrap_statx(int folder, const char* path, int flags, unsigned int mask, struct statx* status) {
    return watched({"statx", path}, [&] { return __real_statx(folder, path, flags, mask, status); });
}

int __wrap_mkdir(const char* path, mode_t mode) {
    return watched({"mkdir", path, true}, [&] { return __real_mkdir(path, mode); });
}

int __wrap_mkdirat(int folder, const char* path, mode_t mode) {
    return watched({"mkdirat", path, true}, [&] { return __real_mkdirat(folder, path, mode); });
}

int __wrap_renameat(int fromFolder, const char* from, int toFolder, const char* to) {
    return watched({"renameat", from, true}, [&] { return __real_renameat(fromFolder, from, toFolder, to); });
}

int __wrap_renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags) {
    return watched({"renameat2", from, true},
                   [&] { return __real_renameat2(fromFolder, from, toFolder, to, flags); });
}

ssize_t __wrap_read(int fd, void* bytes, size_t length) {
    return watched({"read", {}}, [&] { return __real_read(fd, bytes, length); });
}

ssize_t __wrap_write(int fd, const void* bytes, size_t length) {
    return watched({"write", {}, true, &length}, [&] { return __real_write(fd, bytes, length); });
}

ssize_t __wrap_pwrite(int fd, const void* bytes, size_t length, off_t offset) {
    return watched({"pwrite", {}, true}, [&] { return __real_pwrite(fd, bytes, length, offset); });
}

int __wrap_ftruncate(int fd, off_t length) {
    return watched({"ftruncate", {}, true}, [&] { return __real_ftruncate(fd, length); });
}

int __wrap_fsync(int fd) {
    return watched({"fsync", {}}, [&] { return __real_fsync(fd); });
}

int __wrap_unlinkat(int folder, const char* path, int flags) {
    return watched({"unlinkat", path, true}, [&] { return __real_unlinkat(folder, path, flags); });
}

int __wrap_flock(int fd, int operation) {
    return watched({"flock", {}}, [&] { return __real_flock(fd, operation); });
}

// Of the system calls without a function of their own only the opening of a file is of interest here.
long __wrap_syscall(long number, ...) {
    va_list rest;
    va_start(rest, number);
    const long a = va_arg(rest, long);
    const long b = va_arg(rest, long);
    const long c = va_arg(rest, long);
    const long d = va_arg(rest, long);
    va_end(rest);
    const auto make = [&] { return __real_syscall(number, a, b, c, d); };
    if (number != SYS_openat2) {
        return make();
    }
    return watched({"openat2", reinterpret_cast<const char*>(b)}, make); // NOLINT(performance-no-int-to-ptr)
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl50-cpp)
