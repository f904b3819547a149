#include "Volume.h"
#include <cerrno>
#include <fcntl.h>

namespace quillane {

// What has just been resolved is no link; should it have become one, it would lead away, so none is followed.
Descriptor Volume::openRooted(const std::string& path, int flags) const {
    const auto resolved =
        resolveBelow(m_folder, path, (flags & O_NOFOLLOW) != 0 ? LastLink::keep : LastLink::follow);
    if (!resolved) {
        return {};
    }
    int descriptor = -1;
    do {
        descriptor = ::open((m_folder + *resolved).c_str(), flags | O_NOFOLLOW);
    } while (descriptor < 0 && errno == EINTR);
    return Descriptor(descriptor);
}

bool Volume::statusRooted(const std::string& path, LastLink lastLink, struct stat& status) const {
    const auto resolved = resolveBelow(m_folder, path, lastLink);
    return resolved && ::lstat((m_folder + *resolved).c_str(), &status) == 0;
}

} // namespace quillane
