// What is the same on every system; the rest lies in the folder of each.
#include "Volume.h"
#include <cstdlib>
#include <memory>

namespace quillane {
namespace {

std::optional<std::string> machinePath(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    return resolved ? std::optional<std::string>(resolved.get()) : std::nullopt;
}

} // namespace

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
