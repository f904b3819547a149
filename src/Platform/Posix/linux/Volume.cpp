#include "Volume.h"
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <linux/openat2.h>
#include <memory>
#include <sys/syscall.h>

namespace quillane {
namespace {

// The kernel gives up with EAGAIN when something was renamed while it looked at "..".
constexpr int kMostAttempts = 64;

FileDescriptor openInRoot(int root, const char* path, int flags) {
    open_how how = {};
    how.flags = static_cast<std::uint64_t>(static_cast<unsigned int>(flags));
    how.resolve = RESOLVE_IN_ROOT;
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        const auto descriptor = ::syscall(SYS_openat2, root, path, &how, sizeof how);
        if (descriptor >= 0 || (errno != EAGAIN && errno != EINTR)) {
            return FileDescriptor(static_cast<int>(descriptor));
        }
    }
    return {};
}

bool holdsNul(const std::string& path) {
    if (path.find('\0') == std::string::npos) {
        return false;
    }
    errno = EINVAL; // the system would read up to the NUL and reach another file
    return true;
}

} // namespace

Volume::Volume(std::string folder)
    : m_root(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(folder.c_str(), nullptr),
                                                               &std::free);
    m_folder = resolved ? resolved.get() : std::move(folder);
}

FileDescriptor Volume::open(const std::string& path, int flags) const {
    if (holdsNul(path)) {
        return {};
    }
    if (!isRooted()) {
        int descriptor = -1;
        do {
            descriptor = ::open(path.c_str(), flags | O_CLOEXEC);
        } while (descriptor < 0 && errno == EINTR);
        return FileDescriptor(descriptor);
    }
    if (!m_root) {
        errno = ENOENT;
        return {};
    }
    return openInRoot(m_root.get(), path.c_str(), flags | O_CLOEXEC);
}

bool Volume::status(const std::string& path, LastLink lastLink, struct stat& status) const {
    if (holdsNul(path)) {
        return false;
    }
    if (!isRooted()) {
        const int flags = lastLink == LastLink::keep ? AT_SYMLINK_NOFOLLOW : 0;
        return ::fstatat(AT_FDCWD, path.c_str(), &status, flags | AT_NO_AUTOMOUNT) == 0;
    }
    const auto place = open(path, O_PATH | (lastLink == LastLink::keep ? O_NOFOLLOW : 0));
    return place && ::fstatat(place.get(), "", &status, AT_EMPTY_PATH) == 0;
}

} // namespace quillane
