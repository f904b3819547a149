#include "Volume.h"
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>

namespace quillane {
namespace {

bool holdsNul(const std::string& path) {
    if (path.find('\0') == std::string::npos) {
        return false;
    }
    errno = EINVAL; // the system would read up to the NUL and reach another file
    return true;
}

} // namespace

Volume::Volume(std::string folder) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(folder.c_str(), nullptr),
                                                               &std::free);
    m_folder = resolved ? resolved.get() : std::move(folder);
}

FileDescriptor Volume::open(const std::string& path, int flags) const {
    if (holdsNul(path)) {
        return {};
    }
    std::string place = path;
    if (isRooted()) {
        const auto lastLink = (flags & O_NOFOLLOW) != 0 ? LastLink::keep : LastLink::follow;
        const auto resolved = resolveBelow(m_folder, path, lastLink);
        if (!resolved) {
            return {};
        }
        place = m_folder + *resolved;
        flags |=
            O_NOFOLLOW; // what has just been resolved is no link; should it have become one, it leads away
    }
    int descriptor = -1;
    do {
        descriptor = ::open(place.c_str(), flags | O_CLOEXEC);
    } while (descriptor < 0 && errno == EINTR);
    return FileDescriptor(descriptor);
}

bool Volume::status(const std::string& path, LastLink lastLink, struct stat& status) const {
    if (holdsNul(path)) {
        return false;
    }
    if (!isRooted()) {
        return (lastLink == LastLink::keep ? ::lstat : ::stat)(path.c_str(), &status) == 0;
    }
    const auto resolved = resolveBelow(m_folder, path, lastLink);
    return resolved && ::lstat((m_folder + *resolved).c_str(), &status) == 0;
}

} // namespace quillane
