#include "Volume.h"
#include "KernelCalls.h"
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <sys/syscall.h>

namespace quillane {
namespace {

// The kernel gives up with EAGAIN when something was renamed while it looked at "..".
constexpr int kMostAttempts = 64;

} // namespace

Descriptor Volume::openRooted(const std::string& path, int flags) const {
    KernelCalls::OpenHow how = {};
    how.flags = static_cast<std::uint64_t>(static_cast<unsigned int>(flags));
    how.resolve = KernelCalls::kResolveInRoot;
    if (!m_root) {
        errno = ENOENT;
        return {};
    }
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        const auto descriptor = ::syscall(SYS_openat2, m_root.get(), path.c_str(), &how, sizeof how);
        if (descriptor >= 0 || (errno != EAGAIN && errno != EINTR)) {
            return Descriptor(static_cast<int>(descriptor));
        }
    }
    return {};
}

bool Volume::statusRooted(const std::string& path, LastLink lastLink, struct stat& status) const {
    const auto place = openRooted(path, O_PATH | O_CLOEXEC | (lastLink == LastLink::keep ? O_NOFOLLOW : 0));
    return place && ::fstatat(place.get(), "", &status, AT_EMPTY_PATH) == 0;
}

} // namespace quillane
