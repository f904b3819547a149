#include "TrashBin.h"
#include "PosixError.h"
#include "TrashFolder.h"
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace quillane::TrashBins {
namespace {

constexpr mode_t kFolderMode = 0700;
constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
constexpr const char* kShared = ".Trash";

// Made for the user alone when it is missing. A link is refused.
Descriptor openOrMake(int parent, const std::string& name) {
    if (::mkdirat(parent, name.c_str(), kFolderMode) != 0 && errno != EEXIST) {
        return {};
    }
    return openFolderAt(parent, name);
}

// The same for a folder that must be the user's own: what another user can read or take out is not moved there.
Descriptor openOrMakeOwn(int parent, const std::string& name, uid_t user) {
    auto folder = openOrMake(parent, name);
    struct stat status = {};
    if (folder && ::fstat(folder.get(), &status) != 0) {
        return {};
    }
    if (folder && status.st_uid != user) {
        errno = ENOTDIR;
        return {};
    }
    return folder;
}

std::string parentOf(const std::string& path) {
    return FileURL(path).deletingLastPathComponent().path();
}

bool makeFolder(const std::string& path) {
    return ::mkdir(path.c_str(), kFolderMode) == 0 || errno == EEXIST;
}

// With each missing folder above it; links on the way are the user's own.
bool makeFolders(const std::string& path) {
    return makeFolder(path) ||
           (errno == ENOENT && path != "/" && makeFolders(parentOf(path)) && makeFolder(path));
}

Descriptor openPath(const std::string& path) {
    return Descriptor(::open(path.c_str(), kOpenFolder));
}

Descriptor openOrMakePath(const std::string& path) {
    auto folder = openPath(path);
    return !folder && errno == ENOENT && makeFolders(path) ? openPath(path) : std::move(folder);
}

// A file, a link or another's folder in the place of one is no failure of the system.
PlatformError unusable(int error) {
    if (error == ENOTDIR || error == ELOOP) {
        return {ErrorCode::kFeatureUnsupported, std::nullopt};
    }
    return PosixError::writing(error);
}

Result<TrashBin> withFolders(const Descriptor& trash, std::string path, std::string topPath) {
    TrashBin bin{openOrMake(trash.get(), "files"), {}, std::move(path), std::move(topPath)};
    if (bin.files) { // else the error is that of the first
        bin.info = openOrMake(trash.get(), "info");
    }
    if (!bin.files || !bin.info) {
        return unusable(errno);
    }
    return bin;
}

// The highest folder above a path without links that is on the same device.
std::string topOfVolume(std::string path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return path;
    }
    while (path != "/") {
        const auto above = parentOf(path);
        struct stat aboveStatus = {};
        if (::stat(above.c_str(), &aboveStatus) != 0 || aboveStatus.st_dev != status.st_dev) {
            break;
        }
        path = above;
    }
    return path;
}

// A shared ".Trash" counts only when it is a real folder with the sticky bit: anyone may have made it.
Descriptor openShared(int top) {
    auto shared = openFolderAt(top, kShared);
    struct stat status = {};
    if (shared && (::fstat(shared.get(), &status) != 0 || (status.st_mode & S_ISVTX) == 0)) {
        shared.reset();
    }
    return shared;
}

std::string ownName(uid_t user) {
    return ".Trash-" + std::to_string(user);
}

} // namespace

Descriptor openFolderAt(int folder, const std::string& name) {
    return Descriptor(::openat(folder, name.c_str(), kOpenFolder | O_NOFOLLOW));
}

Descriptor openHome(const std::string& dataHome) {
    const auto data = openPath(dataHome);
    if (!data) {
        errno = errno == ENOTDIR ? ENOENT : errno; // a file on the way holds no Trash either
        return {};
    }
    return openFolderAt(data.get(), "Trash");
}

Result<TrashBin> makeHome(const std::string& dataHome) {
    const auto data = openOrMakePath(dataHome);
    const auto trash = data ? openOrMake(data.get(), "Trash") : Descriptor();
    if (!trash) {
        return unusable(errno);
    }
    return withFolders(trash, dataHome + "/Trash", "");
}

Result<TrashBin> makeOnVolume(const std::string& folder, uid_t user) {
    const auto topPath = topOfVolume(folder);
    const auto top = openPath(topPath);
    if (!top) {
        return PosixError::writing(errno);
    }
    const std::string base = topPath == "/" ? "" : topPath;
    Descriptor own;
    std::string path;
    if (const auto shared = openShared(top.get())) {
        own = openOrMakeOwn(shared.get(), std::to_string(user), user);
        path = base + "/" + kShared + "/" + std::to_string(user);
    }
    if (!own) {
        own = openOrMakeOwn(top.get(), ownName(user), user);
        path = base + "/" + ownName(user);
    }
    if (!own && (errno == EACCES || errno == EPERM)) {
        // The volume's top is another's. That is no word about the item, which nobody need be asked to unlock.
        return PlatformError{ErrorCode::kFeatureUnsupported, std::nullopt};
    }
    if (!own) {
        return unusable(errno);
    }
    return withFolders(own, path, topPath);
}

Result<Descriptor> openOnVolume(const std::string& path, uid_t user) {
    const FileURL trash(path);
    const auto above = trash.deletingLastPathComponent();
    const bool own = trash.lastPathComponent() == ownName(user);
    const bool shared =
        trash.lastPathComponent() == std::to_string(user) && above.lastPathComponent() == kShared;
    if (!own && !shared) {
        return PosixError::writing(EINVAL);
    }
    const auto top = openPath(holderOf(trash).path());
    if (top && !TrashFolder::isTopOfVolume(top.get())) {
        return PosixError::writing(EINVAL);
    }
    const auto sharedTrash = top && shared ? openFolderAt(top.get(), kShared) : Descriptor();
    auto opened = top && (own || sharedTrash)
                      ? openFolderAt((own ? top : sharedTrash).get(), std::string(trash.lastPathComponent()))
                      : Descriptor();
    if (!opened) {
        return PosixError::writing(errno);
    }
    return opened;
}

FileURL holderOf(const FileURL& trash) {
    const auto above = trash.deletingLastPathComponent();
    return above.lastPathComponent() == kShared ? above.deletingLastPathComponent() : above;
}

} // namespace quillane::TrashBins
