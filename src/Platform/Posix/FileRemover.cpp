#include "FileRemover.h"
#include "Descriptor.h"
#include "PosixError.h"
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace quillane::FileRemover {
namespace {

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

// A folder that is being emptied, and its name in the folder above.
struct Level {
    Directory directory;
    std::string name;
};

Directory openFolder(int parent, const std::string& name) {
    Descriptor fd(::openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!fd) {
        return nullptr;
    }
    DIR* directory = ::fdopendir(fd.get());
    if (directory != nullptr) {
        fd.release();
    }
    return Directory(directory);
}

bool isSelfOrParent(std::string_view name) {
    return name == "." || name == "..";
}

// What became of one entry of a folder.
enum class Outcome { gone, isFolder, failed };

Outcome unlinkEntry(int folder, const std::string& name) {
    if (::unlinkat(folder, name.c_str(), 0) == 0 || errno == ENOENT) {
        return Outcome::gone;
    }
    if (errno == EISDIR || errno == EPERM) { // EPERM is how some systems refuse to unlink a folder
        const int refused = errno;
        struct stat status = {};
        if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode)) {
            return Outcome::isFolder;
        }
        errno = refused;
    }
    return Outcome::failed;
}

// Unlinks what the folder holds until it meets a folder, which is returned opened; nothing when it is empty.
Result<std::optional<Level>> emptyUntilFolder(DIR* directory) {
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(directory);
        if (entry == nullptr) {
            if (errno != 0) {
                return PosixError::writing(errno);
            }
            return std::optional<Level>();
        }
        if (isSelfOrParent(entry->d_name)) {
            continue;
        }
        const std::string name = entry->d_name;
        switch (unlinkEntry(::dirfd(directory), name)) {
        case Outcome::gone:
            break;
        case Outcome::failed:
            return PosixError::writing(errno);
        case Outcome::isFolder: {
            auto below = openFolder(::dirfd(directory), name);
            if (!below) {
                return PosixError::writing(errno);
            }
            return std::optional<Level>(Level{std::move(below), name});
        }
        }
    }
}

} // namespace

Result<> removeFile(int folder, const std::string& name) {
    if (::unlinkat(folder, name.c_str(), 0) != 0) {
        return PosixError::writing(errno);
    }
    return success();
}

Result<> removeTree(int folder, const std::string& name) {
    switch (unlinkEntry(folder, name)) {
    case Outcome::gone:
        return success();
    case Outcome::failed:
        return PosixError::writing(errno);
    case Outcome::isFolder:
        break;
    }
    // Level by level and not by recursion, so that depth costs descriptors and not the stack.
    std::vector<Level> levels;
    levels.push_back({openFolder(folder, name), name});
    if (!levels.back().directory) {
        return PosixError::writing(errno);
    }
    while (!levels.empty()) {
        auto below = emptyUntilFolder(levels.back().directory.get());
        if (!below) {
            return below.error();
        }
        if (*below) {
            levels.push_back(std::move(*below.value()));
            continue;
        }
        const std::string emptied = std::move(levels.back().name);
        levels.pop_back();
        const int parent = levels.empty() ? folder : ::dirfd(levels.back().directory.get());
        if (::unlinkat(parent, emptied.c_str(), AT_REMOVEDIR) != 0 && errno != ENOENT) {
            return PosixError::writing(errno);
        }
        if (!levels.empty()) {
            ::rewinddir(levels.back().directory.get()); // entries moved while we were below
        }
    }
    return success();
}

} // namespace quillane::FileRemover
