#include "RootedPath.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace quillane {
namespace {

constexpr int kMostLinks = 40; // as the Linux kernel has it

// The components of a path with the first on top.
using Components = std::vector<std::string>;

void pushComponents(Components& components, std::string_view path) {
    const auto begin = components.size();
    while (!path.empty()) {
        const auto slash = std::min(path.find('/'), path.size());
        if (slash > 0 && path.substr(0, slash) != ".") {
            components.emplace_back(path.substr(0, slash));
        }
        path.remove_prefix(std::min(slash + 1, path.size()));
    }
    std::reverse(components.begin() + static_cast<std::ptrdiff_t>(begin), components.end());
}

void dropLast(std::string& path) {
    if (const auto slash = path.rfind('/'); slash != std::string::npos) {
        path.resize(slash);
    }
}

// As the system's calls: errno tells why not.
bool isFolder(const std::string& hostPath) {
    struct stat status = {};
    if (::lstat(hostPath.c_str(), &status) != 0) {
        return false;
    }
    if (!S_ISDIR(status.st_mode)) {
        errno = ENOTDIR;
        return false;
    }
    return true;
}

// The text of a link; empty when it is none; nothing when there is no such entry.
std::optional<std::string> linkText(const std::string& hostPath) {
    std::array<char, PATH_MAX> text = {};
    const auto length = ::readlink(hostPath.c_str(), text.data(), text.size());
    if (length >= 0) {
        return std::string(text.data(), static_cast<std::size_t>(length));
    }
    return errno == EINVAL ? std::optional<std::string>("") : std::nullopt;
}

} // namespace

std::optional<std::string> resolveBelow(const std::string& folder, std::string_view path, LastLink lastLink) {
    Components left;
    pushComponents(left, path);
    std::string resolved; // without a trailing slash; empty is the root
    int links = 0;
    while (!left.empty()) {
        const std::string component = std::move(left.back());
        left.pop_back();
        if (component == "..") {
            if (!isFolder(folder + resolved)) {
                return std::nullopt;
            }
            dropLast(resolved);
            continue;
        }
        std::string next = resolved;
        next += '/';
        next += component;
        const auto target = linkText(folder + next);
        if (!target) {
            return std::nullopt;
        }
        if (target->empty() || (left.empty() && lastLink == LastLink::keep)) {
            resolved = std::move(next);
            continue;
        }
        if (++links > kMostLinks) {
            errno = ELOOP;
            return std::nullopt;
        }
        if (target->front() == '/') {
            resolved.clear();
        }
        pushComponents(left, *target);
    }
    return resolved.empty() ? "/" : resolved;
}

std::string lexicallyNormal(std::string_view path) {
    Components left;
    pushComponents(left, path);
    std::string normal;
    for (; !left.empty(); left.pop_back()) {
        if (left.back() == "..") {
            dropLast(normal);
        } else {
            normal += '/';
            normal += left.back();
        }
    }
    return normal.empty() ? "/" : normal;
}

} // namespace quillane
