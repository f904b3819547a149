#include "PosixFileSystem.h"
#include "DirectoryReader.h"
#include "PosixError.h"
#include "Walk.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <deque>
#include <fcntl.h>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace quillane {
namespace {

constexpr Bytes kBlockBytes = 512;   // what st_blocks counts
constexpr int kMaxLinks = 40;        // as many as the kernel follows
constexpr mode_t kFolderMode = 0777; // default attributes: the user's mask decides

FileURL accountHome() {
    if (const char* home = std::getenv("HOME");
        home != nullptr && home[0] == '/') { // NOLINT(concurrency-mt-unsafe)
        return FileURL(home);
    }
    const passwd* account = ::getpwuid(::getuid()); // NOLINT(concurrency-mt-unsafe): before any thread
    return FileURL(account != nullptr ? account->pw_dir : "/");
}

EntryType typeOf(mode_t mode) {
    return S_ISREG(mode)   ? EntryType::regular
           : S_ISDIR(mode) ? EntryType::directory
           : S_ISLNK(mode) ? EntryType::symbolicLink
                           : EntryType::other;
}

ResourceValues valuesOf(const struct stat& status) {
    ResourceValues values;
    values.type = typeOf(status.st_mode);
    values.fileSize = static_cast<Bytes>(status.st_size);
    if (values.type == EntryType::regular) {
        values.allocated = static_cast<Bytes>(status.st_blocks) * kBlockBytes;
        values.totalAllocated = values.allocated;
    }
    values.contentModified = Date::fromUnix(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
    values.device = status.st_dev;
    values.inode = status.st_ino;
    return values;
}

// The components of a path, empty ones left out.
std::deque<std::string> componentsOf(std::string_view path) {
    std::deque<std::string> components;
    for (std::size_t begin = 0; begin < path.size();) {
        const auto end = std::min(path.find('/', begin), path.size());
        if (end > begin) {
            components.emplace_back(path.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    return components;
}

std::string joined(const std::deque<std::string>& components) {
    std::string path;
    for (const auto& component : components) {
        path += "/" + component;
    }
    return path.empty() ? "/" : path;
}

std::string parentOf(const std::string& path) {
    return path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
}

// "." and ".." removed as text.
std::string withoutDots(std::string_view path) {
    std::deque<std::string> kept;
    for (auto& component : componentsOf(path)) {
        if (component == "..") {
            if (!kept.empty()) {
                kept.pop_back();
            }
        } else if (component != ".") {
            kept.push_back(std::move(component));
        }
    }
    return joined(kept);
}

bool beginsWithFolder(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

PosixFileSystem::PosixFileSystem()
    : m_home(accountHome()) {}

PosixFileSystem::PosixFileSystem(const std::string& hostFolder, FileURL home)
    : m_root(hostFolder)
    , m_home(std::move(home)) {}

bool PosixFileSystem::exists(const FileURL& url) const {
    return static_cast<bool>(m_root.open(url.path(), O_PATH));
}

Result<std::vector<DirectoryEntry>> PosixFileSystem::list(const FileURL& folder) const {
    const auto fd = m_root.open(folder.path(), O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    if (!fd) {
        return PosixError::reading(errno);
    }
    DirectoryReader reader;
    DirectoryReader::Entry entry;
    std::vector<DirectoryEntry> entries;
    while (reader.fill(fd.get())) {
        while (reader.next(entry)) {
            if (entry.view().starts_with("._")) {
                continue;
            }
            struct stat status = {};
            if (!entry.type && ::fstatat(fd.get(), entry.name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
                continue; // vanished meanwhile
            }
            entries.push_back({std::string(entry.view()), entry.type.value_or(typeOf(status.st_mode))});
        }
    }
    if (errno != 0) {
        return PosixError::reading(errno);
    }
    return entries;
}

Result<ResourceValues> PosixFileSystem::resourceValues(const FileURL& url) const {
    const auto fd = m_root.open(url.path(), O_PATH | O_NOFOLLOW);
    struct stat status = {};
    if (!fd || ::fstat(fd.get(), &status) != 0) {
        return PosixError::reading(errno);
    }
    return valuesOf(status);
}

Result<> PosixFileSystem::walk(const FileURL& root, WalkOptions options, Visitor visit) const {
    auto fd = m_root.open(root.path(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK);
    if (!fd) {
        return PosixError::reading(errno);
    }
    walkBelow(std::move(fd), options, visit);
    return success();
}

Result<std::string> PosixFileSystem::read(const FileURL& url, std::size_t limit) const {
    // A pipe or a device must not hold us, so nothing blocks before we know what it is.
    const auto fd = m_root.open(url.path(), O_RDONLY | O_NONBLOCK | O_NOCTTY);
    struct stat status = {};
    if (!fd || ::fstat(fd.get(), &status) != 0) {
        return PosixError::reading(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return PosixError::reading(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
    std::string bytes;
    std::array<char, 65536> buffer;
    while (bytes.size() < limit) {
        const auto count = ::read(fd.get(), buffer.data(), std::min(buffer.size(), limit - bytes.size()));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return PosixError::reading(errno);
        }
        if (count == 0) {
            break;
        }
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return bytes;
}

// Nothing unless every component exists.
std::optional<std::string> PosixFileSystem::resolved(const std::string& path) const {
    auto left = componentsOf(path);
    std::string done = "/";
    int links = 0;
    while (!left.empty()) {
        const std::string component = std::move(left.front());
        left.pop_front();
        if (component == ".") {
            continue;
        }
        if (component == "..") {
            done = parentOf(done);
            continue;
        }
        const std::string next = (done == "/" ? "" : done) + "/" + component;
        const auto fd = m_root.open(next, O_PATH | O_NOFOLLOW);
        struct stat status = {};
        if (!fd || ::fstat(fd.get(), &status) != 0) {
            return std::nullopt;
        }
        if (!S_ISLNK(status.st_mode)) {
            done = next;
            continue;
        }
        std::array<char, PATH_MAX> target{};
        const auto length = ::readlinkat(fd.get(), "", target.data(), target.size());
        if (length <= 0 || ++links > kMaxLinks) {
            return std::nullopt;
        }
        const std::string_view text(target.data(), static_cast<std::size_t>(length));
        auto components = componentsOf(text);
        left.insert(left.begin(), std::make_move_iterator(components.begin()),
                    std::make_move_iterator(components.end()));
        if (text.starts_with('/')) {
            done = "/";
        }
    }
    return exists(FileURL(done)) ? std::optional(done) : std::nullopt;
}

// "/private" and its kin are left out of a path where the rest is there too and is not the system's own.
std::string PosixFileSystem::withoutPrivatePrefix(std::string path) const {
    static constexpr std::array<std::string_view, 3> kPrefixes = {"/private/var/automount", "/var/automount",
                                                                  "/private"};
    static constexpr std::array<std::string_view, 12> kKept = {
        "/Applications", "/Library", "/System", "/Users",   "/Volumes", "/bin",
        "/cores",        "/dev",     "/opt",    "/private", "/sbin",    "/usr"};
    for (const auto prefix : kPrefixes) {
        if (!beginsWithFolder(path, prefix) || path.size() == prefix.size()) {
            continue;
        }
        const std::string rest = path.substr(prefix.size());
        const bool isKept =
            std::ranges::any_of(kKept, [&](auto folder) { return beginsWithFolder(rest, folder); });
        if (!isKept && exists(FileURL(rest))) {
            return rest;
        }
        return path;
    }
    return path;
}

FileURL PosixFileSystem::standardized(const FileURL& url) const {
    std::string path = url.path();
    const auto components = componentsOf(path);
    if (std::ranges::find(components, "..") != components.end()) {
        path = resolved(path).value_or(path);
    }
    return FileURL(withoutPrivatePrefix(withoutDots(path)));
}

FileURL PosixFileSystem::resolvingSymlinks(const FileURL& url) const {
    return standardized(FileURL(resolved(url.path()).value_or(url.path())));
}

Result<> PosixFileSystem::createDirectories(const FileURL& url) {
    std::string path;
    for (const auto& component : componentsOf(url.path())) {
        // Each folder is opened by its path, so that links on the way keep to the volume.
        const auto parent = m_root.open(path.empty() ? "/" : path, O_RDONLY | O_DIRECTORY);
        if (!parent) {
            return PosixError::writing(errno);
        }
        if (::mkdirat(parent.get(), component.c_str(), kFolderMode) != 0 && errno != EEXIST) {
            return PosixError::writing(errno);
        }
        path += "/" + component;
    }
    const auto made = m_root.open(url.path(), O_RDONLY | O_DIRECTORY);
    if (!made) {
        return PosixError::writing(errno == ENOTDIR ? EEXIST : errno);
    }
    return success();
}

} // namespace quillane
