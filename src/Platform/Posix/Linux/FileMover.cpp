#include "FileMover.h"
#include "Descriptor.h"
#include "FileRemover.h"
#include "PosixError.h"
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane::FileMover {
namespace {

constexpr mode_t kOwnerOnlyFolder = 0700;
constexpr mode_t kOwnerOnlyFile = 0600;

// One entry, here and there.
struct Move {
    int fromFolder;
    const std::string& fromName;
    int toFolder;
    const std::string& toName;
};

Result<> replaceTarget(const Move& move) {
    if (::renameat(move.fromFolder, move.fromName.c_str(), move.toFolder, move.toName.c_str()) != 0) {
        return PosixError::writing(errno);
    }
    return success();
}

// A folder replaces an empty folder and nothing else, so an empty one may keep the name for it.
Result<> moveFolder(const Move& move) {
    if (::mkdirat(move.toFolder, move.toName.c_str(), kOwnerOnlyFolder) != 0) {
        return PosixError::writing(errno);
    }
    auto moved = replaceTarget(move);
    if (!moved) {
        (void)FileRemover::removeEmptyFolder(move.toFolder, move.toName);
    }
    return moved;
}

// An empty file keeps the name, and nobody but us writes into that one.
Result<> moveFileIntoTrash(const Move& move) {
    const Descriptor taken(::openat(move.toFolder, move.toName.c_str(),
                                    O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kOwnerOnlyFile));
    if (!taken) {
        return PosixError::writing(errno);
    }
    auto moved = replaceTarget(move);
    if (!moved) {
        (void)FileRemover::removeFile(move.toFolder, move.toName);
    }
    return moved;
}

// A second name is never that of another file, and what has the first one in the Trash is the same file still.
Result<> moveFileOutOfTrash(const Move& move) {
    if (::linkat(move.fromFolder, move.fromName.c_str(), move.toFolder, move.toName.c_str(), 0) != 0) {
        return PosixError::writing(errno == EPERM ? EINVAL : errno); // no second names on this file system
    }
    return FileRemover::removeFile(move.fromFolder, move.fromName);
}

} // namespace

Result<> move(int fromFolder, const std::string& fromName, int toFolder, const std::string& toName,
              TrashSide trash) {
    if (::renameat2(fromFolder, fromName.c_str(), toFolder, toName.c_str(), RENAME_NOREPLACE) == 0) {
        return success();
    }
    // Some network and user-space file systems can't refuse a taken name by themselves.
    const int refused = errno;
    struct stat status = {};
    if (refused != EINVAL || ::fstatat(fromFolder, fromName.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return PosixError::writing(refused);
    }
    const Move move{fromFolder, fromName, toFolder, toName};
    if (S_ISDIR(status.st_mode)) {
        return moveFolder(move);
    }
    return trash == TrashSide::to ? moveFileIntoTrash(move) : moveFileOutOfTrash(move);
}

Result<> replace(int folder, const std::string& temporaryName, const std::string& name) {
    if (::renameat(folder, temporaryName.c_str(), folder, name.c_str()) != 0) {
        return PosixError::writing(errno);
    }
    return success();
}

} // namespace quillane::FileMover
