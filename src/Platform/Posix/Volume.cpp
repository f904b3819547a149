// What is the same on every system; the rest lies in the folder of each.
#include "Volume.h"
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>

namespace quillane {
namespace {

std::optional<std::string> machinePath(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    return resolved ? std::optional<std::string>(resolved.get()) : std::nullopt;
}

bool holdsNul(const std::string& path) {
    if (path.find('\0') == std::string::npos) {
        return false;
    }
    errno = EINVAL; // the system would read up to the NUL and reach another file
    return true;
}

} // namespace

Volume::Volume(const std::string& folder)
    : m_folder(machinePath(folder).value_or(folder))
    , m_root(::open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

Descriptor Volume::open(const std::string& path, int flags) const {
    if (holdsNul(path)) {
        return {};
    }
    if (isRooted()) {
        return openRooted(path, flags | O_CLOEXEC);
    }
    int descriptor = -1;
    do {
        descriptor = ::open(path.c_str(), flags | O_CLOEXEC);
    } while (descriptor < 0 && errno == EINTR);
    return Descriptor(descriptor);
}

bool Volume::status(const std::string& path, LastLink lastLink, struct stat& status) const {
    if (holdsNul(path)) {
        return false;
    }
    if (isRooted()) {
        return statusRooted(path, lastLink, status);
    }
    return (lastLink == LastLink::keep ? ::lstat : ::stat)(path.c_str(), &status) == 0;
}

std::optional<std::string> Volume::realPath(const std::string& path) const {
    if (path.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    return isRooted() ? resolveBelow(m_folder, path, LastLink::follow) : machinePath(path);
}

std::string Volume::hostPath(const std::string& path) const {
    if (!isRooted()) {
        return path;
    }
    const auto resolved = resolveBelow(m_folder, path, LastLink::keep);
    if (resolved) {
        return *resolved == "/" ? m_folder : m_folder + *resolved;
    }
    const std::string normal = lexicallyNormal(path);
    const auto slash = normal.rfind('/');
    const auto parent = resolveBelow(m_folder, normal.substr(0, slash), LastLink::follow);
    if (!parent || *parent == "/") {
        return m_folder + (parent ? normal.substr(slash) : normal);
    }
    return m_folder + *parent + normal.substr(slash);
}

} // namespace quillane
