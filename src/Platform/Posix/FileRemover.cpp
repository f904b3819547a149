#include "FileRemover.h"
#include "Descriptor.h"
#include "Mounts.h"
#include "PosixError.h"
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
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
// Subfolders that a folder holds in mind before they are entered. A folder that was closed meanwhile is read from its
// start again, once for so many of them.
constexpr std::size_t kMostWaiting = 256;

// A folder that is being emptied, and its name in the folder above.
struct Level {
    Directory directory; // closed while the work is far below
    std::string name;
    Mounts::Identity identity;
    std::vector<std::string> waiting; // its subfolders that were read and not yet entered
    bool isRead = false;              // to its end
    bool hasLost = false;             // an entry, since its reading began
};

Directory openFolder(int parent, const std::string& name) {
    // NOLINTNEXTLINE(clang-analyzer-unix.StdCLibraryFunctions): a stream that is open has a descriptor
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
        const auto begin = Mounts::identityOf(m_top);
        if (!begin) {
            return lastError();
        }
        m_place = begin->place;
        auto done = enter(name);
        while (done && !m_levels.empty()) {
            done = advance();
        }
        return done;
    }

  private:
    int parent() const { return m_levels.empty() ? m_top : ::dirfd(m_levels.back().directory.get()); }

    // Deletes what the lowest folder holds up to its next subfolders, goes into one of them, or leaves the folder.
    Result<> advance() {
        Level& level = m_levels.back();
        if (level.waiting.empty() && !level.isRead) {
            return readOn(level);
        }
        if (level.waiting.empty()) {
            return leave();
        }
        const std::string name = std::move(level.waiting.back());
        level.waiting.pop_back();
        return enter(name);
    }

    static Result<> readOn(Level& level) {
        while (level.waiting.size() < kMostWaiting) {
            errno = 0;
            // NOLINTNEXTLINE(concurrency-mt-unsafe): the stream is this object's own
            const dirent* entry = ::readdir(level.directory.get());
            if (entry == nullptr) {
                level.isRead = true;
                return errno != 0 ? lastError() : success();
            }
            if (isSelfOrParent(entry->d_name)) {
                continue;
            }
            if (auto removed = removeOrKeep(level, *entry); !removed) {
                return removed;
            }
        }
        return success();
    }

    static Result<> removeOrKeep(Level& level, const dirent& entry) {
        const std::string name = entry.d_name;
        switch (entry.d_type == DT_DIR ? Outcome::isFolder
                                       : unlinkEntry(::dirfd(level.directory.get()), name)) {
        case Outcome::gone:
            level.hasLost = true;
            return success();
        case Outcome::isFolder:
            level.waiting.push_back(name);
            return success();
        case Outcome::failed:
            break;
        }
        return lastError();
    }

    Result<> enter(const std::string& name) {
        auto directory = openFolder(parent(), name);
        if (!directory) {
            return errno == ENOENT ? success() : lastError(); // somebody else deleted it
        }
        const auto identity = Mounts::identityOf(::dirfd(directory.get()));
        if (!identity) {
            return lastError();
        }
        if (identity->place != m_place) {
            return PosixError::writing(EXDEV);
        }
        m_levels.push_back({std::move(directory), name, *identity, {}});
        if (m_levels.size() - m_oldestOpen > kMostOpenFolders) {
            m_levels[m_oldestOpen++].directory.reset();
        }
        return success();
    }

    Result<> leave() {
        Level emptied = std::move(m_levels.back());
        m_levels.pop_back();
        if (!m_levels.empty() && !m_levels.back().directory) {
            if (auto opened = reopen(m_levels.back(), ::dirfd(emptied.directory.get())); !opened) {
                return opened;
            }
        }
        // NOLINTNEXTLINE(clang-analyzer-unix.StdCLibraryFunctions): as above
        if (::unlinkat(parent(), emptied.name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT) {
            if (!m_levels.empty()) {
                m_levels.back().hasLost = true;
            }
            return success();
        }
        return (errno == ENOTEMPTY || errno == EEXIST) && emptied.hasLost ? readAgain(std::move(emptied))
                                                                          : lastError();
    }

    // Something came into the folder while we were below, or the system left entries out because others went.
    Result<> readAgain(Level level) {
        ::rewinddir(level.directory.get());
        level.isRead = false;
        level.hasLost = false;
        m_levels.push_back(std::move(level));
        return success();
    }

    // From a child of it. A folder that was moved meanwhile has another parent, and nothing there is ours.
    Result<> reopen(Level& level, int child) {
        auto directory = openFolder(child, "..");
        const auto identity =
            directory ? Mounts::identityOf(::dirfd(directory.get())) : std::optional<Mounts::Identity>();
        if (!identity) {
            return lastError();
        }
        if (*identity != level.identity) {
            return PosixError::writing(ESTALE);
        }
        level.directory = std::move(directory);
        --m_oldestOpen;
        return success();
    }

    const int m_top;             // stays the caller's
    Mounts::Place m_place;       // nothing outside of it is entered
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
    if (Mounts::isAnyAtOrBelow(folder, name)) {
        return PosixError::writing(EXDEV);
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
