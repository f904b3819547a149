// What is the same on every system; the rest lies in the folder of each.
#include "FileMover.h"
#include "PosixError.h"
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

namespace quillane::FileMover {
namespace {

// Remote and user-space disks may do what they are asked and lose the answer on its way back.
bool wasMovedAllTheSame(const struct stat& item, int fromFolder, const std::string& fromName, int toFolder,
                        const std::string& toName) {
    struct stat there = {};
    struct stat left = {};
    return ::fstatat(toFolder, toName.c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0 &&
           there.st_dev == item.st_dev && there.st_ino == item.st_ino &&
           ::fstatat(fromFolder, fromName.c_str(), &left, AT_SYMLINK_NOFOLLOW) != 0 && errno == ENOENT;
}

} // namespace

Result<> move(int fromFolder, const std::string& fromName, int toFolder, const std::string& toName) {
    struct stat item = {};
    const bool isKnown = ::fstatat(fromFolder, fromName.c_str(), &item, AT_SYMLINK_NOFOLLOW) == 0;
    if (renameToFree(fromFolder, fromName.c_str(), toFolder, toName.c_str())) {
        return success();
    }
    const int error = errno;
    if (isKnown && wasMovedAllTheSame(item, fromFolder, fromName, toFolder, toName)) {
        return success();
    }
    return PosixError::writing(error);
}

Result<> replace(int folder, const std::string& temporaryName, const std::string& name) {
    if (::renameat(folder, temporaryName.c_str(), folder, name.c_str()) != 0) {
        return PosixError::writing(errno);
    }
    return success();
}

} // namespace quillane::FileMover
