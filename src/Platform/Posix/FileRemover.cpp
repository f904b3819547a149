#include "FileRemover.h"
#include "Descriptor.h"
#include "PosixError.h"
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace quillane::FileRemover {
namespace {

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

// As for walks: far below the 256 descriptors that a process may have.
constexpr std::size_t kMostOpenFolders = 20;

// A folder that is being emptied, and its name in the folder above.
struct Level {
    Directory directory; // closed while the work is far below
    std::string name;
    dev_t device = 0; // its identity, once closed
    ino_t inode = 0;
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

PlatformError lastError() {
    return PosixError::writing(errno);
}

// Empties a folder level by level and not by recursion.
class TreeRemoval {
  public:
    explicit TreeRemoval(int top)
        : m_top(top) {}

    Result<> run(const std::string& name) {
        auto done = enter(name);
        while (done && !m_levels.empty()) {
            done = advance();
        }
        return done;
    }

  private:
    int parent() const { return m_levels.empty() ? m_top : ::dirfd(m_levels.back().directory.get()); }

    // Unlinks the next entry of the lowest folder, goes into it, or leaves the folder when it was the last.
    Result<> advance() {
        errno = 0;
        // NOLINTNEXTLINE(concurrency-mt-unsafe): the stream is this object's own
        const dirent* entry = ::readdir(m_levels.back().directory.get());
        if (entry == nullptr) {
            return errno != 0 ? lastError() : leave();
        }
        if (isSelfOrParent(entry->d_name)) {
            return success();
        }
        const std::string name = entry->d_name;
        switch (unlinkEntry(parent(), name)) {
        case Outcome::gone:
            return success();
        case Outcome::isFolder:
            return enter(name);
        case Outcome::failed:
            break;
        }
        return lastError();
    }

    Result<> enter(const std::string& name) {
        auto directory = openFolder(parent(), name);
        if (!directory) {
            return lastError();
        }
        m_levels.push_back({std::move(directory), name});
        return m_levels.size() - m_oldestOpen > kMostOpenFolders ? closeOldest() : success();
    }

    Result<> closeOldest() {
        Level& oldest = m_levels[m_oldestOpen];
        struct stat status = {};
        if (::fstat(::dirfd(oldest.directory.get()), &status) != 0) {
            return lastError();
        }
        oldest.device = status.st_dev;
        oldest.inode = status.st_ino;
        oldest.directory.reset();
        ++m_oldestOpen;
        return success();
    }

    Result<> leave() {
        const Level emptied = std::move(m_levels.back());
        m_levels.pop_back();
        if (!m_levels.empty() && !m_levels.back().directory) {
            if (auto opened = reopen(m_levels.back(), ::dirfd(emptied.directory.get())); !opened) {
                return opened;
            }
        }
        if (::unlinkat(parent(), emptied.name.c_str(), AT_REMOVEDIR) != 0 && errno != ENOENT) {
            return lastError();
        }
        if (!m_levels.empty()) {
            ::rewinddir(m_levels.back().directory.get()); // entries moved while we were below
        }
        return success();
    }

    // From a child of it. A folder that was moved meanwhile has another parent, and nothing there is ours.
    Result<> reopen(Level& level, int child) {
        auto directory = openFolder(child, "..");
        struct stat status = {};
        if (!directory || ::fstat(::dirfd(directory.get()), &status) != 0) {
            return lastError();
        }
        if (status.st_dev != level.device || status.st_ino != level.inode) {
            return PosixError::writing(ESTALE);
        }
        level.directory = std::move(directory);
        --m_oldestOpen;
        return success();
    }

    const int m_top;             // stays the caller's
    std::vector<Level> m_levels; // the highest first; all closed before m_oldestOpen, all others open
    std::size_t m_oldestOpen = 0;
};

} // namespace

Result<> removeFile(int folder, const std::string& name) {
    if (::unlinkat(folder, name.c_str(), 0) != 0) {
        return lastError();
    }
    return success();
}

Result<> removeTree(int folder, const std::string& name) {
    switch (unlinkEntry(folder, name)) {
    case Outcome::gone:
        return success();
    case Outcome::failed:
        return lastError();
    case Outcome::isFolder:
        break;
    }
    return TreeRemoval(folder).run(name);
}

Result<> shorten(int file, off_t size) {
    if (::ftruncate(file, size) != 0) {
        return lastError();
    }
    return success();
}

} // namespace quillane::FileRemover
