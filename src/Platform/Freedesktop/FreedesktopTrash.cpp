#include "FreedesktopTrash.h"
#include "FileMover.h"
#include "FileRemover.h"
#include "PosixError.h"
#include "TrashFolder.h"
#include "TrashInfo.h"
#include "TrashNames.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

constexpr mode_t kFolderMode = 0700;
constexpr mode_t kRecordMode = 0600;
constexpr std::string_view kRecordSuffix = ".trashinfo";
// An item's name leaves room for the suffix of its record.
constexpr std::size_t kMaxItemName = TrashFolder::kMaxNameBytes - kRecordSuffix.size();
constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

Descriptor openFolderAt(int folder, const char* name) {
    return Descriptor(::openat(folder, name, kOpenFolder | O_NOFOLLOW));
}

// Opens a folder below `parent`, made for the user alone when it is missing. A link is refused.
Descriptor openOrMake(int parent, const char* name) {
    if (::mkdirat(parent, name, kFolderMode) != 0 && errno != EEXIST) {
        return {};
    }
    return openFolderAt(parent, name);
}

// The same for each missing folder of a path of the machine.
Descriptor openOrMakePath(const std::string& path) {
    Descriptor folder(::open("/", kOpenFolder));
    for (std::size_t begin = 1; folder && begin < path.size();) {
        const auto end = std::min(path.find('/', begin), path.size());
        if (end > begin) {
            const std::string name = path.substr(begin, end - begin);
            if (::mkdirat(folder.get(), name.c_str(), kFolderMode) != 0 && errno != EEXIST) {
                return {};
            }
            folder =
                Descriptor(::openat(folder.get(), name.c_str(), kOpenFolder)); // may be the user's own link
        }
        begin = end + 1;
    }
    return folder;
}

std::string parentOf(const std::string& path) {
    return FileURL(path).deletingLastPathComponent().path();
}

bool sameVolume(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev;
}

// The top of the volume that holds the folder at `path`: the highest folder above it on the same device.
std::string topOfVolume(std::string path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return path;
    }
    while (path != "/") {
        const auto above = parentOf(path);
        struct stat aboveStatus = {};
        if (::stat(above.c_str(), &aboveStatus) != 0 || !sameVolume(status, aboveStatus)) {
            break;
        }
        path = above;
    }
    return path;
}

// The status of a path or, where it is missing, of the nearest folder above it.
bool statNearest(std::string path, struct stat& status) {
    while (::stat(path.c_str(), &status) != 0) {
        if (path == "/") {
            return false;
        }
        path = parentOf(path);
    }
    return true;
}

std::string localTime(Date now) {
    const auto seconds = static_cast<std::time_t>(now.secondsSince1970());
    std::tm local = {};
    ::localtime_r(&seconds, &local);
    std::array<char, 32> text{};
    const auto length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &local);
    return {text.data(), length};
}

// Writes a record under a name that must be free. The error for a taken name is "file exists".
Result<> writeRecord(int infoFolder, const std::string& name, const std::string& text) {
    const Descriptor file(::openat(infoFolder, name.c_str(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kRecordMode));
    if (!file) {
        return PosixError::writing(errno);
    }
    const auto written = ::write(file.get(), text.data(), text.size());
    const bool isWhole = written == static_cast<ssize_t>(text.size());
    if (isWhole && ::fsync(file.get()) == 0) {
        return success();
    }
    const int error = isWhole || written < 0 ? errno : ENOSPC;
    (void)FileRemover::removeFile(infoFolder, name);
    return PosixError::writing(error);
}

PlatformError unsupported() {
    return {ErrorCode::kFeatureUnsupported, std::nullopt};
}

} // namespace

FreedesktopTrash::Places FreedesktopTrash::Places::ofThisUser(const FileURL& home) {
    const char* dataHome = std::getenv("XDG_DATA_HOME"); // NOLINT(concurrency-mt-unsafe): nobody sets it
    if (dataHome != nullptr && dataHome[0] == '/') {     // a relative path is to be ignored
        return {FileURL(dataHome).path(), ::getuid()};
    }
    return {home.appending(".local/share").path(), ::getuid()};
}

FreedesktopTrash::FreedesktopTrash(Places places, const Clock& clock)
    : m_places(std::move(places))
    , m_clock(clock) {}

std::optional<FileURL> FreedesktopTrash::location() const {
    FileURL files(m_places.dataHome + "/Trash/files");
    struct stat status = {};
    if (::lstat(files.path().c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR)) {
        return std::nullopt;
    }
    return files;
}

Result<std::vector<FileURL>> FreedesktopTrash::items() const {
    const auto folder = location();
    if (!folder) {
        return std::vector<FileURL>();
    }
    Descriptor files(::open(folder->path().c_str(), kOpenFolder | O_NOFOLLOW));
    if (!files) {
        return PosixError::reading(errno);
    }
    return TrashFolder::items(std::move(files), *folder);
}

Result<FreedesktopTrash::Bin> FreedesktopTrash::homeBin() const {
    const auto trash = openOrMakePath(m_places.dataHome + "/Trash");
    if (!trash) {
        return PosixError::writing(errno);
    }
    Bin bin{openOrMake(trash.get(), "files"), {}, m_places.dataHome + "/Trash", ""};
    if (bin.files) { // else the error is that of the first
        bin.info = openOrMake(trash.get(), "info");
    }
    if (!bin.files || !bin.info) {
        return PosixError::writing(errno);
    }
    return bin;
}

Result<FreedesktopTrash::Bin> FreedesktopTrash::volumeBin(const FileURL& url, int parent) const {
    // The volume is that of the folder that is open, whatever its path has become.
    const auto top = topOfVolume(url.deletingLastPathComponent().path());
    const Descriptor topFolder(::open(top.c_str(), kOpenFolder));
    struct stat topStatus = {};
    struct stat parentStatus = {};
    if (!topFolder || ::fstat(topFolder.get(), &topStatus) != 0 || ::fstat(parent, &parentStatus) != 0 ||
        !sameVolume(topStatus, parentStatus)) {
        return unsupported();
    }
    const std::string user = std::to_string(m_places.user);
    const std::string base = top == "/" ? "" : top;
    Descriptor own;
    std::string path;
    // A shared ".Trash" counts only when it is a real folder with the sticky bit: anyone may have made it.
    if (const auto shared = openFolderAt(topFolder.get(), ".Trash")) {
        struct stat status = {};
        if (::fstat(shared.get(), &status) == 0 && (status.st_mode & S_ISVTX) != 0) {
            own = openOrMake(shared.get(), user.c_str());
            path = base + "/.Trash/" + user;
        }
    }
    if (!own) {
        const std::string name = ".Trash-" + user;
        own = openOrMake(topFolder.get(), name.c_str());
        path = base + "/" + name;
    }
    struct stat ownStatus = {};
    if (!own || ::fstat(own.get(), &ownStatus) != 0 || ownStatus.st_uid != m_places.user) {
        return unsupported();
    }
    Bin bin{openOrMake(own.get(), "files"), openOrMake(own.get(), "info"), path, top};
    if (!bin.files || !bin.info) {
        return unsupported();
    }
    return bin;
}

Result<std::optional<FileURL>> FreedesktopTrash::moveInto(const Bin& bin, int parent,
                                                          const FileURL& url) const {
    const std::string name(url.lastPathComponent());
    std::string recorded = url.path();
    if (!bin.topPath.empty()) { // records of a volume hold paths below its top, wherever it is mounted next
        recorded = recorded.substr(bin.topPath == "/" ? 1 : bin.topPath.size() + 1);
    }
    const auto text = TrashInfo::text(recorded, localTime(m_clock.now()));
    for (int attempt = 0; attempt < TrashFolder::kMaxAttempts; ++attempt) {
        const auto free = TrashNames::candidate(name, attempt, kMaxItemName);
        const auto record = free + std::string(kRecordSuffix);
        if (const auto written = writeRecord(bin.info.get(), record, text); !written) {
            if (written.error().underlying == EEXIST) {
                continue;
            }
            return written.error();
        }
        const auto moved = FileMover::move(parent, name, bin.files.get(), free);
        if (moved) {
            return std::optional(FileURL(bin.path + "/files/" + free));
        }
        (void)FileRemover::removeFile(bin.info.get(), record);
        if (moved.error().underlying != EEXIST) {
            return moved.error();
        }
    }
    return PosixError::writing(EEXIST);
}

Result<std::optional<FileURL>> FreedesktopTrash::moveToTrash(const FileURL& url) {
    const Descriptor parent(::open(url.deletingLastPathComponent().path().c_str(), kOpenFolder));
    struct stat item = {};
    if (!parent || ::fstatat(parent.get(), std::string(url.lastPathComponent()).c_str(), &item,
                             AT_SYMLINK_NOFOLLOW) != 0) {
        return PosixError::writing(errno);
    }
    if (const auto home = homeBin(); !home) {
        // A home Trash that can't be used is no reason to look for another on its own volume.
        struct stat data = {};
        if (statNearest(m_places.dataHome, data) && sameVolume(item, data)) {
            return home.error();
        }
    } else if (struct stat files = {}; ::fstat(home->files.get(), &files) != 0) {
        return PosixError::writing(errno);
    } else if (sameVolume(item, files)) {
        auto moved = moveInto(*home, parent.get(), url);
        if (moved || moved.error().underlying != EXDEV) { // one device may still be several volumes
            return moved;
        }
    }
    const auto volume = volumeBin(url, parent.get());
    if (!volume) {
        return volume.error();
    }
    return moveInto(*volume, parent.get(), url);
}

bool FreedesktopTrash::isTrashFilesFolder(const FileURL& folder) const {
    if (folder.lastPathComponent() != "files") {
        return false;
    }
    const auto trash = folder.deletingLastPathComponent();
    if (trash.path() == m_places.dataHome + "/Trash") {
        return true;
    }
    const std::string user = std::to_string(m_places.user);
    const auto holder = trash.deletingLastPathComponent();
    const bool own = trash.lastPathComponent() == ".Trash-" + user;
    const bool shared = trash.lastPathComponent() == user && holder.lastPathComponent() == ".Trash";
    const auto top = own ? holder : holder.deletingLastPathComponent();
    return (own || shared) && topOfVolume(top.path()) == top.path();
}

Result<Descriptor> FreedesktopTrash::openInfoBeside(const Descriptor& files) const {
    Descriptor info(::openat(files.get(), "../info", kOpenFolder | O_NOFOLLOW));
    if (!info) {
        return PosixError::writing(errno);
    }
    return info;
}

Result<> FreedesktopTrash::moveOut(const FileURL& inTrash, const FileURL& original) {
    const auto folder = inTrash.deletingLastPathComponent();
    if (!isTrashFilesFolder(folder)) {
        return PosixError::writing(EINVAL); // records that were tampered with move nothing else
    }
    const Descriptor files(::open(folder.path().c_str(), kOpenFolder | O_NOFOLLOW));
    const Descriptor parent(files ? ::open(original.deletingLastPathComponent().path().c_str(), kOpenFolder)
                                  : -1);
    if (!parent) {
        return PosixError::writing(errno);
    }
    const std::string name(inTrash.lastPathComponent());
    auto moved = FileMover::move(files.get(), name, parent.get(), std::string(original.lastPathComponent()));
    if (moved) {
        if (const auto info = openInfoBeside(files)) {
            (void)FileRemover::removeFile(info->get(), name + std::string(kRecordSuffix));
        }
    }
    return moved;
}

Result<> FreedesktopTrash::deleteItem(const FileURL& inTrash) {
    const auto folder = location();
    if (!folder || !TrashFolder::holdsDirectly(*folder, inTrash)) {
        return PosixError::writing(EINVAL);
    }
    const Descriptor files(::open(folder->path().c_str(), kOpenFolder | O_NOFOLLOW));
    if (!files) {
        return PosixError::writing(errno);
    }
    const std::string name(inTrash.lastPathComponent());
    auto removed = FileRemover::removeTree(files.get(), name);
    if (removed) {
        if (const auto info = openInfoBeside(files)) {
            (void)FileRemover::removeFile(info->get(), name + std::string(kRecordSuffix));
        }
    }
    return removed;
}

} // namespace quillane
