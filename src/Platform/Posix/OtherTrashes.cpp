#include "OtherTrashes.h"
#include "PosixError.h"
#include "TrashFolder.h"
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace quillane::OtherTrashes {
namespace {

constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
constexpr const char* kOfVolume = ".Trashes";
constexpr const char* kOfCloud = ".Trash";
constexpr std::array kCloudFolders{"Library/Mobile Documents/", "Library/CloudStorage/"};

bool isOwn(int folder, uid_t user) {
    struct stat status = {};
    return ::fstat(folder, &status) == 0 && status.st_uid == user;
}

// The folder that holds all users' need not be one that can be opened: who trashes may search it, and no more. So what
// was reached through it says what it is.
bool liesInFolder(int folder, int top, const char* name) {
    struct stat above = {};
    struct stat entry = {};
    return ::fstatat(folder, "..", &above, 0) == 0 &&
           ::fstatat(top, name, &entry, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(entry.st_mode) &&
           above.st_dev == entry.st_dev && above.st_ino == entry.st_ino;
}

Result<Descriptor> refused() {
    return PosixError::writing(EINVAL);
}

Result<Descriptor> openOfVolume(const FileURL& top, uid_t user) {
    const Descriptor topFolder(::open(top.path().c_str(), kOpenFolder));
    if (topFolder && !TrashFolder::isTopOfVolume(topFolder.get())) {
        return refused();
    }
    const auto below = kOfVolume + ("/" + std::to_string(user));
    Descriptor folder(topFolder ? ::openat(topFolder.get(), below.c_str(), kOpenFolder | O_NOFOLLOW) : -1);
    if (!folder) {
        return PosixError::writing(errno);
    }
    if (!liesInFolder(folder.get(), topFolder.get(), kOfVolume) || !isOwn(folder.get(), user)) {
        return refused();
    }
    return folder;
}

bool isBelowClouds(const FileURL& folder, const FileURL& home) {
    const auto& path = folder.path();
    for (const auto* clouds : kCloudFolders) {
        if (path.starts_with(home.appending(clouds).path() + "/")) {
            return path.find("/../") == std::string::npos;
        }
    }
    return false;
}

Result<Descriptor> openOfCloud(const FileURL& folder, uid_t user) {
    Descriptor opened(::open(folder.path().c_str(), kOpenFolder | O_NOFOLLOW));
    if (!opened) {
        return PosixError::writing(errno);
    }
    if (!isOwn(opened.get(), user)) {
        return refused();
    }
    return opened;
}

} // namespace

Result<Descriptor> open(const FileURL& folder, const FileURL& home, uid_t user) {
    if (TrashFolder::endsEarly(folder)) {
        return refused();
    }
    const auto above = folder.deletingLastPathComponent();
    if (folder.lastPathComponent() == std::to_string(user) && above.lastPathComponent() == kOfVolume) {
        return openOfVolume(above.deletingLastPathComponent(), user);
    }
    if (folder.lastPathComponent() == kOfCloud && isBelowClouds(folder, home)) {
        return openOfCloud(folder, user);
    }
    return refused();
}

} // namespace quillane::OtherTrashes
