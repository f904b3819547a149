#include "FreedesktopTrash.h"
#include "FileMover.h"
#include "FileRemover.h"
#include "PosixError.h"
#include "SpaceReserve.h"
#include "StatusTime.h"
#include "TrashFolder.h"
#include "TrashInfo.h"
#include "TrashNames.h"
#include "TrashOrigin.h"
#include "Volume.h"
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

constexpr mode_t kRecordMode = 0600;
constexpr double kLongestMove = 3600; // in seconds, and far beyond
// An item's name leaves room for the suffix of its record.
constexpr std::size_t kMaxItemName = TrashFolder::kMaxNameBytes - TrashInfo::kSuffix.size();
constexpr const char* kFiles = "files";
constexpr const char* kInfo = "info";
constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

std::string parentOf(const std::string& path) {
    return FileURL(path).deletingLastPathComponent().path();
}

bool sameVolume(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev;
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

// Of an item that is no longer in the Trash. One that can't be removed does no harm.
void removeRecord(const Descriptor& info, const std::string& name) {
    if (info) {
        (void)FileRemover::removeFile(info.get(), name + std::string(TrashInfo::kSuffix));
    }
}

} // namespace

FreedesktopTrash::Places FreedesktopTrash::Places::ofThisUser(const FileURL& home) {
    const char* dataHome = std::getenv("XDG_DATA_HOME"); // NOLINT(concurrency-mt-unsafe): nobody sets it
    if (dataHome != nullptr && dataHome[0] == '/') {     // a relative path is to be ignored
        return {FileURL(dataHome).path(), ::getuid()};
    }
    return {home.appending(".local/share").path(), ::getuid()};
}

FreedesktopTrash::FreedesktopTrash(Places places, const Clock& clock, SpaceReserve* reserve)
    : m_places(std::move(places))
    , m_clock(clock)
    , m_reserve(reserve) {}

std::optional<FileURL> FreedesktopTrash::location() const {
    const auto trash = TrashBins::openHome(m_places.dataHome);
    struct stat status = {};
    const bool known = trash && ::fstatat(trash.get(), kFiles, &status, AT_SYMLINK_NOFOLLOW) == 0;
    if (!known && errno == ENOENT) {
        return std::nullopt;
    }
    return FileURL(homePath()).appending(kFiles);
}

Result<std::vector<FileURL>> FreedesktopTrash::items() const {
    const auto trash = TrashBins::openHome(m_places.dataHome);
    auto files = trash ? TrashBins::openFolderAt(trash.get(), kFiles) : Descriptor();
    if (!files && errno == ENOENT) {
        return std::vector<FileURL>();
    }
    if (!files) {
        return PosixError::reading(errno);
    }
    return TrashFolder::items(std::move(files), FileURL(homePath()).appending(kFiles));
}

Result<std::optional<FileURL>> FreedesktopTrash::moveInto(const TrashBin& bin, int parent,
                                                          const FileURL& url) const {
    const std::string name(url.lastPathComponent());
    std::string recorded = url.path();
    if (!bin.topPath.empty()) { // records of a volume hold paths below its top, wherever it is mounted next
        recorded = recorded.substr(bin.topPath == "/" ? 1 : bin.topPath.size() + 1);
    }
    const auto text = TrashInfo::text(recorded, localTime(m_clock.now()));
    for (int attempt = 0; attempt < TrashFolder::kMaxAttempts; ++attempt) {
        const auto free = TrashNames::candidate(name, attempt, kMaxItemName);
        const auto record = free + std::string(TrashInfo::kSuffix);
        if (const auto written = writeRecord(bin.info.get(), record, text); !written) {
            if (written.error().underlying == EEXIST) {
                continue;
            }
            return written.error();
        }
        const auto moved = FileMover::move(parent, name, bin.files.get(), free);
        if (moved) {
            return std::optional(FileURL(bin.path + "/" + kFiles + "/" + free));
        }
        (void)FileRemover::removeFile(bin.info.get(), record);
        if (moved.error().underlying != EEXIST) {
            return moved.error();
        }
    }
    return PosixError::writing(EEXIST);
}

Result<std::optional<FileURL>> FreedesktopTrash::moveToTrash(const FileURL& url) {
    if (TrashFolder::endsEarly(url)) {
        return PosixError::writing(EINVAL);
    }
    const Descriptor parent(::open(url.deletingLastPathComponent().path().c_str(), kOpenFolder));
    struct stat item = {};
    struct stat folder = {};
    if (!parent ||
        ::fstatat(parent.get(), std::string(url.lastPathComponent()).c_str(), &item, AT_SYMLINK_NOFOLLOW) !=
            0 ||
        ::fstat(parent.get(), &folder) != 0) {
        return PosixError::writing(errno);
    }
    if (m_reserve != nullptr) {
        m_reserve->layAgain();
    }
    return SpaceReserve::draw(m_reserve, {.device = folder.st_dev},
                              [&] { return moveFrom(parent.get(), folder, url); });
}

// Into the Trash of the volume of `parent`, whose status is `folder`: on layered file systems the item itself bears
// the device of its layer.
Result<std::optional<FileURL>> FreedesktopTrash::moveFrom(int parent, const struct stat& folder,
                                                          const FileURL& url) const {
    if (const auto home = TrashBins::makeHome(m_places.dataHome); !home) {
        // A home Trash that can't be used is no reason to look for another on its own volume.
        struct stat data = {};
        if (statNearest(m_places.dataHome, data) && sameVolume(folder, data)) {
            return home.error();
        }
    } else if (struct stat files = {}; ::fstat(home->files.get(), &files) != 0) {
        return PosixError::writing(errno);
    } else if (sameVolume(folder, files)) {
        auto moved = moveInto(*home, parent, url);
        if (moved || moved.error().underlying != EXDEV) { // one device may still be several volumes
            return moved;
        }
    }
    return moveIntoVolume(parent, url);
}

// Folders above the item may be links to another volume, so its Trash is looked for above the folder that is open.
Result<std::optional<FileURL>> FreedesktopTrash::moveIntoVolume(int parent, const FileURL& url) const {
    const auto folder = Volume().realPath(url.deletingLastPathComponent().path());
    struct stat found = {};
    struct stat opened = {};
    if (!folder || ::stat(folder->c_str(), &found) != 0 || ::fstat(parent, &opened) != 0) {
        return PosixError::writing(errno);
    }
    if (!sameVolume(found, opened) || found.st_ino != opened.st_ino) {
        return PosixError::writing(ESTALE); // the path leads elsewhere by now
    }
    const auto bin = TrashBins::makeOnVolume(*folder, m_places.user);
    if (!bin) {
        return bin.error();
    }
    return moveInto(*bin, parent, FileURL(*folder).appending(url.lastPathComponent()));
}

// The Trash that has this folder for its items: records that were tampered with move nothing else.
Result<Descriptor> FreedesktopTrash::openTrash(const FileURL& filesFolder) const {
    const auto path = filesFolder.deletingLastPathComponent().path();
    if (filesFolder.lastPathComponent() != kFiles) {
        return PosixError::writing(EINVAL);
    }
    if (path != homePath()) {
        return TrashBins::openOnVolume(path, m_places.user);
    }
    auto trash = TrashBins::openHome(m_places.dataHome);
    if (!trash) {
        return PosixError::writing(errno);
    }
    return trash;
}

Result<bool> FreedesktopTrash::cameFrom(const FileURL& inTrash, const FileURL& original) const {
    const auto trash = openTrash(inTrash.deletingLastPathComponent());
    if (!trash) {
        return trash.error();
    }
    const auto holder = TrashBins::holderOf(inTrash.deletingLastPathComponent().deletingLastPathComponent());
    const auto origin = TrashOrigin::recorded(trash->get(), std::string(inTrash.lastPathComponent()), holder);
    if (!origin) {
        return origin.error();
    }
    const auto& place = *origin;
    return place && TrashOrigin::isSamePlace(*place, original);
}

Result<> FreedesktopTrash::moveOut(const FileURL& inTrash, const FileURL& original) {
    if (TrashFolder::endsEarly(inTrash) || TrashFolder::endsEarly(original)) {
        return PosixError::writing(EINVAL);
    }
    const auto trash = openTrash(inTrash.deletingLastPathComponent());
    if (!trash) {
        return trash.error();
    }
    const auto files = TrashBins::openFolderAt(trash->get(), kFiles);
    const Descriptor parent(files ? ::open(original.deletingLastPathComponent().path().c_str(), kOpenFolder)
                                  : -1);
    if (!parent) {
        return PosixError::writing(errno);
    }
    const std::string name(inTrash.lastPathComponent());
    struct stat folder = {};
    (void)::fstat(parent.get(), &folder);
    auto moved = SpaceReserve::draw(m_reserve, {.device = folder.st_dev, .use = SpaceReserve::Use::anything},
                                    [&] { // a folder may have to grow
                                        return FileMover::move(files.get(), name, parent.get(),
                                                               std::string(original.lastPathComponent()));
                                    });
    if (moved) {
        removeRecord(TrashBins::openFolderAt(trash->get(), kInfo), name);
    }
    return moved;
}

// A young record may be that of a move which is under way, in whatever program, also one that sets earlier dates.
void FreedesktopTrash::removeOldStrays(int files, const Descriptor& info) const {
    auto listed = TrashFolder::items(TrashBins::openFolderAt(info.get(), "."), FileURL());
    for (const auto& record : std::move(listed).valueOr({})) {
        const std::string name(record.lastPathComponent());
        struct stat status = {};
        if (!name.ends_with(TrashInfo::kSuffix) ||
            ::fstatat(info.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
            m_clock.now().secondsSince1970() -
                    std::max(modifiedOf(status), changedOf(status)).secondsSince1970() <
                kLongestMove) {
            continue;
        }
        const auto item = name.substr(0, name.size() - TrashInfo::kSuffix.size());
        if (::fstatat(files, item.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 && errno == ENOENT) {
            (void)FileRemover::removeFile(info.get(), name);
        }
    }
}

Result<> FreedesktopTrash::deleteItem(const FileURL& inTrash) {
    if (!TrashFolder::holdsDirectly(FileURL(homePath()).appending(kFiles), inTrash)) {
        return PosixError::writing(EINVAL);
    }
    const auto trash = TrashBins::openHome(m_places.dataHome);
    const auto files = trash ? TrashBins::openFolderAt(trash.get(), kFiles) : Descriptor();
    if (!files) {
        return PosixError::writing(errno);
    }
    const std::string name(inTrash.lastPathComponent());
    auto removed = FileRemover::removeTree(files.get(), name);
    if (removed) {
        const auto info = TrashBins::openFolderAt(trash.get(), kInfo);
        removeRecord(info, name);
        if (info && TrashFolder::isEmpty(files.get())) {
            removeOldStrays(files.get(), info);
        }
    }
    if (m_reserve != nullptr) {
        m_reserve->layAgain();
    }
    return removed;
}

} // namespace quillane
