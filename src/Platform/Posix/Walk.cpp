#include "Walk.h"
#include "DirectoryReader.h"
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quillane {
namespace {

// Open folders at a time. Deeper trees close the outermost ones and open them again on the way back; real
// trees stay well below.
constexpr std::size_t kMaxOpenFolders = 64;
constexpr int kOpenFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;
// What POSIX calls a block in st_blocks.
constexpr Bytes kBlockBytes = 512;

// A folder that is being walked.
struct Folder {
    Descriptor fd;
    // Names of folders met in the entries read last, each ended by a NUL, that are still to be entered. No
    // more than one reading's worth, so that a folder of a million folders costs no more than others.
    std::string pending;
    std::size_t nextPending = 0;
    // How to go on after the descriptor was closed for want of descriptors.
    off_t offset = 0;
    dev_t device = 0;
    ino_t inode = 0;
    bool isAtEnd = false;
};

class Walk {
  public:
    Walk(WalkOptions options, FileSystem::Visitor visit)
        : m_options(options)
        , m_visit(visit) {}

    void run(Descriptor root) {
        push(std::move(root));
        while (!m_folders.empty() && !m_isStopped) {
            auto& folder = m_folders.back();
            if (folder.nextPending < folder.pending.size()) {
                enterNext(folder);
            } else if (!folder.isAtEnd) {
                readOn(folder);
            } else {
                pop();
            }
        }
    }

  private:
    void push(Descriptor fd) {
        m_folders.emplace_back();
        m_folders.back().fd = std::move(fd);
        if (m_folders.size() > kMaxOpenFolders) {
            suspend(m_folders[m_folders.size() - 1 - kMaxOpenFolders]);
        }
    }

    // Closes a folder that lies far above, keeping what it takes to find it and its place again.
    static void suspend(Folder& folder) {
        struct stat status = {};
        if (!folder.fd || ::fstat(folder.fd.get(), &status) != 0) {
            return;
        }
        folder.device = status.st_dev;
        folder.inode = status.st_ino;
        folder.offset = ::lseek(folder.fd.get(), 0, SEEK_CUR);
        folder.fd.reset();
    }

    // Leaves the innermost folder; the one above is opened again from below when it was closed.
    void pop() {
        const Descriptor below = std::move(m_folders.back().fd);
        m_folders.pop_back();
        if (m_folders.empty() || m_folders.back().fd) {
            return;
        }
        auto& folder = m_folders.back();
        Descriptor fd(::openat(below.get(), "..", kOpenFlags));
        struct stat status = {};
        const bool isSame = fd && ::fstat(fd.get(), &status) == 0 && status.st_dev == folder.device &&
                            status.st_ino == folder.inode && ::lseek(fd.get(), folder.offset, SEEK_SET) >= 0;
        if (isSame) {
            folder.fd = std::move(fd);
            return;
        }
        // It was moved away under us: nothing of it or of what lies above can be found any more.
        m_folders.clear();
    }

    void enterNext(Folder& folder) {
        const char* name = folder.pending.data() + folder.nextPending;
        folder.nextPending += std::char_traits<char>::length(name) + 1;
        Descriptor fd(::openat(folder.fd.get(), name, kOpenFlags));
        if (fd) { // else it vanished, became something else or may not be read: skipped
            push(std::move(fd));
        }
    }

    void readOn(Folder& folder) {
        folder.pending.clear();
        folder.nextPending = 0;
        if (!m_reader.fill(folder.fd.get())) {
            folder.isAtEnd = true;
            return;
        }
        const int level = static_cast<int>(m_folders.size());
        DirectoryReader::Entry read;
        while (m_reader.next(read)) {
            WalkEntry entry{read.view(), EntryType::other, level, 0};
            if (!complete(entry, read, folder.fd.get())) {
                continue; // vanished meanwhile
            }
            const auto answer = m_visit(entry);
            if (answer == WalkAnswer::stop) {
                m_isStopped = true;
                return;
            }
            if (entry.type == EntryType::directory && answer == WalkAnswer::proceed) {
                folder.pending.append(read.name, read.length + 1);
            }
        }
    }

    // Fills in what the entry is and takes. False when it is gone.
    bool complete(WalkEntry& entry, const DirectoryReader::Entry& read, int folder) const {
        const bool measures = m_options.measures && read.type == EntryType::regular;
        if (read.type && !measures) {
            entry.type = *read.type;
            return true;
        }
        struct stat status = {};
        if (::fstatat(folder, read.name, &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0) {
            return false;
        }
        entry.type = S_ISREG(status.st_mode)   ? EntryType::regular
                     : S_ISDIR(status.st_mode) ? EntryType::directory
                     : S_ISLNK(status.st_mode) ? EntryType::symbolicLink
                                               : EntryType::other;
        if (m_options.measures && entry.type == EntryType::regular) {
            entry.allocated = static_cast<Bytes>(status.st_blocks) * kBlockBytes;
        }
        return true;
    }

    WalkOptions m_options;
    FileSystem::Visitor m_visit;
    DirectoryReader m_reader;
    std::vector<Folder> m_folders; // from the root inwards
    bool m_isStopped = false;
};

} // namespace

void walkBelow(Descriptor root, WalkOptions options, FileSystem::Visitor visit) {
    Walk(options, visit).run(std::move(root));
}

} // namespace quillane
