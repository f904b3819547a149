#include "TreeWalk.h"
#include "DirectoryReader.h"
#include "FileStatus.h"
#include "PosixError.h"
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace quillane {
namespace {

// Six walks run at a time, and macOS gives a process 256 descriptors: each walk stays well below a sixth.
constexpr std::size_t kMostOpenFolders = 20;
// Names of folders not yet entered, in bytes, above which folders are read in the smallest batches.
constexpr std::size_t kPendingNames = std::size_t{1024} * 1024;
// Stands before the name of a folder that is marked as a package; no name has it.
constexpr char kPackageMark = '/';
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;

// A folder on the way from the root to where the walk is.
struct Level {
    Descriptor folder;              // closed while the walk is far below
    bool exhausted = false;         // all its entries have been read
    std::size_t pendingBegin = 0;   // where its folders begin among the names not yet entered
    DirectoryReader::Place place{}; // how far it has been read
    dev_t device = 0;               // its identity, once closed
    ino_t inode = 0;
};

Result<ResourceValues> valuesBelow(int folder, const char* name) {
    struct stat status;
    if (!statusBelow(folder, name, status)) {
        return PosixError::reading(errno);
    }
    return resourceValuesOf(status);
}

class TreeWalk {
  public:
    TreeWalk(Descriptor root, WalkOptions options, FileSystem::Visitor visit)
        : m_options(options)
        , m_visit(visit)
        , m_reader(DirectoryReader::kLargestBatch, {.sizes = options.measures, .marks = options.readsMarks}) {
        push(std::move(root));
    }

    // Each folder is read to its end and its files are told; its folders are noted, then told and entered one
    // after the other. So one buffer serves all levels, and what waits is names of folders only.
    void run() {
        bool proceeds = true;
        while (proceeds && !m_levels.empty()) {
            if (m_pending.size() > m_levels.back().pendingBegin) {
                proceeds = enterNext();
            } else if (!m_levels.back().exhausted) {
                proceeds = readLevel();
            } else {
                leave();
            }
        }
    }

  private:
    int level() const { return static_cast<int>(m_levels.size()); }

    // False when the visitor stops.
    bool readLevel() {
        Level& level = m_levels.back();
        while (!level.exhausted) {
            const bool crowded = m_pending.size() > kPendingNames;
            if (crowded && m_pending.size() > level.pendingBegin) {
                return true; // enter what is noted, then read on
            }
            const auto batch = crowded ? DirectoryReader::kSmallestBatch : DirectoryReader::kLargestBatch;
            if (m_reader.fill(level.folder.get(), batch, level.place) != DirectoryReader::Filled::entries) {
                level.exhausted = true;
                return true;
            }
            if (!tellBatch(level.folder.get())) {
                return false;
            }
            level.place = m_reader.placeAfter(level.place);
            level.exhausted = m_reader.exhausted();
        }
        return true;
    }

    bool tellBatch(int folder) {
        RawEntry raw;
        while (m_reader.next(raw)) {
            const auto values = [&] { return valuesBelow(folder, raw.name); };
            WalkEntry entry{.name = {raw.name, raw.length}, .level = level(), .resourceValues = values};
            inspect(folder, raw, entry);
            if (entry.type == EntryType::directory) {
                if (raw.isMarkedAsPackage) {
                    m_pending += kPackageMark;
                }
                m_pending.append(raw.name, raw.length + 1); // its NUL with it
            } else if (m_visit(entry) == WalkAnswer::stop) {
                return false;
            }
        }
        return true;
    }

    // The one call of the system for a file, and only for what needs it and was not told by its folder. What has
    // vanished meanwhile, or lies in a folder that can be listed but not entered, keeps its listed type and measures 0.
    void inspect(int folder, const RawEntry& raw, WalkEntry& entry) const {
        entry.type = raw.type.value_or(EntryType::other);
        if (raw.type && !(m_options.measures && *raw.type == EntryType::regular)) {
            return;
        }
        if (raw.allocated) {
            entry.allocated = *raw.allocated;
            return;
        }
        struct stat status;
        if (!statusBelow(folder, raw.name, status)) {
            return;
        }
        entry.type = entryTypeOfMode(status.st_mode);
        if (m_options.measures && entry.type == EntryType::regular) {
            entry.allocated = allocatedOf(status);
        }
    }

    // Tells the folder noted last, and enters it if the visitor likes. False when the visitor stops.
    bool enterNext() {
        const auto end = m_pending.size() - 1;
        const auto before = end == 0 ? std::string::npos : m_pending.rfind('\0', end - 1);
        const auto begin = before == std::string::npos ? 0 : before + 1;
        const bool isMarked = m_pending[begin] == kPackageMark;
        const char* name = m_pending.data() + begin + (isMarked ? 1 : 0);
        const auto values = [&] { return valuesBelow(m_levels.back().folder.get(), name); };
        const auto answer = m_visit({.name = {name, m_pending.data() + end},
                                     .type = EntryType::directory,
                                     .level = level(),
                                     .isMarkedAsPackage = isMarked,
                                     .resourceValues = values});
        if (answer == WalkAnswer::stop) {
            return false;
        }
        Descriptor folder;
        if (answer == WalkAnswer::proceed) {
            folder = openChild(name);
        }
        m_pending.resize(begin);
        if (folder) {
            push(std::move(folder));
        }
        return true;
    }

    Descriptor openChild(const char* name) {
        while (true) {
            Descriptor folder(::openat(m_levels.back().folder.get(), name, kFolderFlags));
            const bool again =
                !folder && (errno == EINTR || ((errno == EMFILE || errno == ENFILE) && closeOldest()));
            if (!again) {
                return folder;
            }
        }
    }

    void push(Descriptor folder) {
        m_levels.push_back({.folder = std::move(folder), .pendingBegin = m_pending.size()});
        if (m_levels.size() - m_oldestOpen + 1 > kMostOpenFolders) {
            closeOldest();
        }
    }

    // Closes the open folder that is nearest to the root. The root and the lowest two stay: the walk stands in
    // the last, and returns to the one above from a folder that may let itself be listed but not left by "..".
    bool closeOldest() {
        if (m_oldestOpen + 2 >= m_levels.size()) {
            return false;
        }
        Level& oldest = m_levels[m_oldestOpen];
        struct stat status = {};
        if (::fstat(oldest.folder.get(), &status) == 0) {
            oldest.device = status.st_dev;
            oldest.inode = status.st_ino;
        }
        oldest.folder.reset();
        ++m_oldestOpen;
        return true;
    }

    void leave() {
        const Descriptor left = std::move(m_levels.back().folder);
        m_levels.pop_back();
        if (m_levels.empty() || m_levels.back().folder) {
            return;
        }
        if (reopen(m_levels.back(), left.get())) {
            --m_oldestOpen;
        } else {
            returnToRoot();
        }
    }

    // From a child of it. A folder that was moved meanwhile has another parent, and that is not walked.
    static bool reopen(Level& level, int child) {
        Descriptor folder(::openat(child, "..", kFolderFlags));
        struct stat status = {};
        if (!folder || ::fstat(folder.get(), &status) != 0 || status.st_dev != level.device ||
            status.st_ino != level.inode) {
            return false;
        }
        if (!level.exhausted && !DirectoryReader::resume(folder.get(), level.place)) {
            return false;
        }
        level.folder = std::move(folder);
        return true;
    }

    void returnToRoot() {
        m_pending.resize(m_levels.size() > 1 ? m_levels[1].pendingBegin : m_pending.size());
        m_levels.resize(1);
        m_oldestOpen = 1;
    }

    const WalkOptions m_options;
    const FileSystem::Visitor m_visit;
    DirectoryReader m_reader;
    std::vector<Level> m_levels;  // the root first; all closed from 1 to m_oldestOpen, all others open
    std::size_t m_oldestOpen = 1; // the root stays open
    std::string m_pending;        // names with mark and NUL, those of the lowest level last
};

} // namespace

void walkTree(Descriptor root, WalkOptions options, FileSystem::Visitor visit) {
    TreeWalk(std::move(root), options, visit).run();
}

} // namespace quillane
