#include "PosixFileSystem.h"
#include "BlockCounts.h"
#include "CloudFetching.h"
#include "CloudItem.h"
#include "Descriptor.h"
#include "DirectoryReader.h"
#include "ExtendedAttribute.h"
#include "FileStatus.h"
#include "PosixError.h"
#include "SpaceReserve.h"
#include "StatusFlags.h"
#include "TreeWalk.h"
#include "UserHome.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane {
namespace {

constexpr std::size_t kListBatch = std::size_t{32} * 1024;
constexpr std::size_t kFirstRead = std::size_t{64} * 1024;
constexpr mode_t kFolderMode = 0777; // default attributes: the user's mask decides

// Other names under which macOS shows the same files, longest first.
constexpr std::array<std::string_view, 3> kAliasPrefixes = {"/private/var/automount", "/var/automount",
                                                            "/private"};
// Folders of the root for which a path below such a prefix means something else.
constexpr std::array<std::string_view, 12> kOwnFolders = {"/Applications", "/Library", "/System", "/Users",
                                                          "/Volumes",      "/bin",     "/cores",  "/dev",
                                                          "/opt",          "/private", "/sbin",   "/usr"};

PlatformError readingError() {
    return PosixError::reading(errno);
}

bool beginsWithComponents(std::string_view path, std::string_view prefix) {
    return path.starts_with(prefix) && (path.size() == prefix.size() || path[prefix.size()] == '/');
}

bool holdsParentComponent(std::string_view path) {
    return path.find("/../") != std::string_view::npos || path.ends_with("/..");
}

// Grows with what is really there, not with what the file or the caller claims.
Result<std::string> readUpTo(int file, std::size_t limit) {
    std::string bytes;
    std::size_t length = 0;
    while (length < limit) {
        if (length == bytes.size()) {
            bytes.resize(std::min(limit, std::max(kFirstRead, length * 2)));
        }
        const auto count = ::read(file, bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return readingError();
        }
        if (count == 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
    }
    bytes.resize(length);
    bytes.shrink_to_fit();
    return bytes;
}

// Content is looked at without a trace where there is such a thing: only on Linux, and only for one's own files.
#ifdef O_NOATIME
constexpr int kLeavesNoTrace = O_NOATIME;
#else
constexpr int kLeavesNoTrace = 0;
#endif

Descriptor openUntraced(const Volume& volume, const std::string& path) {
    constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    auto file = volume.open(path, kFlags | kLeavesNoTrace);
    if (!file && errno == EPERM && kLeavesNoTrace != 0) {
        file = volume.open(path, kFlags);
    }
    return file;
}

class PosixOpenFile final : public OpenFile {
  public:
    PosixOpenFile(Descriptor file, const struct stat& status)
        : m_file(std::move(file))
        , m_length(status.st_size) {}

    Result<std::size_t> readAt(std::span<std::byte> buffer, Bytes offset) override {
        std::size_t length = 0;
        while (length < buffer.size()) {
            const auto rest = buffer.subspan(length);
            const auto count = ::pread(m_file.get(), rest.data(), rest.size(),
                                       static_cast<off_t>(offset) + static_cast<off_t>(length));
            if (count < 0 && errno == EINTR) {
                continue;
            }
            if (count < 0) {
                return readingError();
            }
            if (count == 0) {
                break;
            }
            length += static_cast<std::size_t>(count);
            if (isAtEnd(offset + static_cast<Bytes>(length))) {
                break;
            }
        }
        return length;
    }

    Result<Bytes> length() override {
        struct stat status = {};
        if (::fstat(m_file.get(), &status) != 0) {
            return readingError();
        }
        return Bytes{status.st_size};
    }

    Result<> close() override {
        // After EINTR the descriptor is gone on Linux and in no known state elsewhere: never closed twice.
        if (::close(m_file.release()) != 0 && errno != EINTR) {
            return readingError();
        }
        return success();
    }

  private:
    // Whether what was read ends where the file did when it was opened: then the system had no more to give and need
    // not be asked once more.
    bool isAtEnd(Bytes end) const { return end == m_length; }

    Descriptor m_file;
    Bytes m_length; // when it was opened
};

} // namespace

PosixFileSystem::PosixFileSystem()
    : m_home(UserHome::path()) {}

PosixFileSystem::PosixFileSystem(const std::string& folder, FileURL home)
    : m_volume(folder)
    , m_home(std::move(home)) {}

bool PosixFileSystem::exists(const FileURL& url) const {
    struct stat status = {};
    return m_volume.status(url.path(), LastLink::follow, status);
}

Result<std::vector<DirectoryEntry>> PosixFileSystem::list(const FileURL& folder) const {
    const auto opened = m_volume.open(folder.path(), O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    if (!opened) {
        return readingError();
    }
    std::vector<DirectoryEntry> entries;
    DirectoryReader reader(kListBatch, {.sizes = false, .marks = true});
    auto filled = DirectoryReader::Filled::entries;
    do {
        filled = reader.fill(opened.get(), kListBatch);
        if (filled == DirectoryReader::Filled::failure) {
            return readingError();
        }
        RawEntry raw;
        while (reader.next(raw)) {
            const std::string_view name(raw.name, raw.length);
            struct stat status = {};
            if (isAppleDouble(name)) {
                continue;
            }
            if (raw.type) {
                entries.push_back({std::string(name), *raw.type, raw.isFlaggedHidden});
            } else if (statusBelow(opened.get(), raw.name, status)) { // otherwise gone since it was listed
                entries.push_back(
                    {std::string(name), entryTypeOfMode(status.st_mode), isFlaggedHidden(status)});
            }
        }
    } while (filled == DirectoryReader::Filled::entries && !reader.exhausted());
    return entries;
}

Result<ResourceValues> PosixFileSystem::resourceValues(const FileURL& url) const {
    struct stat status = {};
    if (!m_volume.status(url.path(), LastLink::keep, status)) {
        return readingError();
    }
    return resourceValuesOf(status);
}

Result<VolumeSpace> PosixFileSystem::volumeSpace(const FileURL& folder) const {
    const auto opened = m_volume.open(folder.path(), O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    const auto counts = opened ? BlockCounts::ofVolumeOf(opened.get()) : std::nullopt;
    return counts ? counts->space() : readingError();
}

Result<> PosixFileSystem::walk(const FileURL& root, WalkOptions options, Visitor visit) const {
    auto opened = m_volume.open(root.path(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK);
    if (!opened) {
        return readingError();
    }
    walkTree(std::move(opened), options, visit);
    return success();
}

Result<std::string> PosixFileSystem::read(const FileURL& url, std::size_t limit) const {
    struct stat status = {};
    if (!m_volume.status(url.path(), LastLink::follow, status)) {
        return readingError();
    }
    // Asked before it is opened: opening a device or a pipe can have an effect, or wait.
    if (!S_ISREG(status.st_mode)) {
        return PosixError::reading(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
    const auto file = m_volume.open(url.path(), O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!file || ::fstat(file.get(), &status) != 0) {
        return readingError();
    }
    // And once more for what was opened, should it have been replaced.
    if (!S_ISREG(status.st_mode)) {
        return PosixError::reading(EINVAL);
    }
    return readUpTo(file.get(), limit);
}

Result<std::string> PosixFileSystem::extendedAttribute(const FileURL& url, const std::string& name,
                                                       std::size_t limit) const {
    struct stat status = {};
    if (!m_volume.status(url.path(), LastLink::keep, status)) {
        return readingError();
    }
    if (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) {
        return PosixError::reading(EINVAL); // opening a device or a pipe can have an effect
    }
    const auto item = m_volume.open(url.path(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW);
    if (!item) {
        return readingError();
    }
    std::string value(limit, '\0');
    const auto length = ExtendedAttribute::read(item.get(), name, value.data(), value.size());
    if (length < 0) {
        return readingError();
    }
    value.resize(static_cast<std::size_t>(length));
    return value;
}

bool PosixFileSystem::isAwaitingDownload(const FileURL& url) const {
    return !m_volume.isRooted() && CloudItem::isAwaitingDownload(url.path());
}

Result<std::unique_ptr<OpenFile>> PosixFileSystem::openForReading(const FileURL& url) const {
    struct stat status = {};
    if (!m_volume.status(url.path(), LastLink::keep, status)) {
        return readingError();
    }
    // As in read(): asked before it is opened, and once more for what was opened.
    if (!S_ISREG(status.st_mode)) {
        return PosixError::reading(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
    auto file = openUntraced(m_volume, url.path());
    if (!file || ::fstat(file.get(), &status) != 0) {
        return readingError();
    }
    if (!S_ISREG(status.st_mode)) {
        return PosixError::reading(EINVAL);
    }
    return std::unique_ptr<OpenFile>(std::make_unique<PosixOpenFile>(std::move(file), status));
}

Result<> PosixFileSystem::createDirectories(const FileURL& url) {
    const CloudFetching::Allowed fetches; // what lies above may be in a cloud alone
    struct stat above = {};
    for (auto folder = url; m_reserve != nullptr && !m_volume.status(folder.path(), LastLink::follow, above);
         folder = folder.deletingLastPathComponent()) {
        if (folder.path() == "/") {
            break;
        }
    }
    return SpaceReserve::draw(m_reserve, {.device = above.st_dev, .use = SpaceReserve::Use::anything},
                              [&] { return makeFolders(url.path()); });
}

Result<> PosixFileSystem::makeFolders(const std::string& path) {
    for (std::size_t end = 0; end < path.size();) {
        const auto begin = end + 1;
        end = std::min(path.find('/', begin), path.size());
        if (end > begin) {
            if (const int error = makeFolder(path.substr(0, end), path.substr(begin, end - begin))) {
                return PosixError::writing(error == EEXIST && end < path.size() ? ENOTDIR : error);
            }
        }
    }
    return success();
}

// The folder above exists. Returns an errno; 0 when the folder is there in the end.
int PosixFileSystem::makeFolder(const std::string& path, const std::string& name) {
    struct stat status = {};
    if (m_volume.status(path, LastLink::follow, status)) {
        return S_ISDIR(status.st_mode) ? 0 : EEXIST;
    }
    if (errno != ENOENT) {
        return errno;
    }
    const auto parent = m_volume.open(path.substr(0, path.size() - name.size()), O_RDONLY | O_DIRECTORY);
    if (!parent) {
        return errno;
    }
    if (::mkdirat(parent.get(), name.c_str(), kFolderMode) == 0) {
        return 0;
    }
    const int error = errno;
    // Somebody else may just have made it.
    const bool isThere = m_volume.status(path, LastLink::follow, status) && S_ISDIR(status.st_mode);
    return isThere ? 0 : error;
}

FileURL PosixFileSystem::resolvingSymlinks(const FileURL& url) const {
    if (auto resolved = m_volume.realPath(url.path())) {
        return FileURL(droppingAliasPrefixes(std::move(*resolved)));
    }
    return standardized(url);
}

FileURL PosixFileSystem::standardized(const FileURL& url) const {
    std::string path = url.path();
    if (holdsParentComponent(path)) {
        path = m_volume.realPath(path).value_or(path);
    }
    return FileURL(droppingAliasPrefixes(lexicallyNormal(path)));
}

std::string PosixFileSystem::droppingAliasPrefixes(std::string path) const {
    for (const auto prefix : kAliasPrefixes) {
        if (!beginsWithComponents(path, prefix)) {
            continue;
        }
        const FileURL rest(path.substr(prefix.size()));
        const bool meansItself = std::ranges::any_of(
            kOwnFolders, [&](std::string_view own) { return beginsWithComponents(rest.path(), own); });
        if (path.size() > prefix.size() && !meansItself && exists(rest)) {
            return rest.path();
        }
    }
    return path;
}

std::string PosixFileSystem::hostPath(const FileURL& url) const {
    return m_volume.hostPath(url.path());
}

} // namespace quillane
