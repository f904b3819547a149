#include "FolderTrash.h"
#include "FileMover.h"
#include "FileRemover.h"
#include "PosixError.h"
#include "TrashFolder.h"
#include "TrashNames.h"
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace quillane {
namespace {

constexpr const char* kName = ".Trash";
constexpr mode_t kOwnerOnly = 0700;

} // namespace

FolderTrash::FolderTrash(const std::string& hostRoot, FileURL home)
    : m_root(hostRoot)
    , m_home(std::move(home))
    , m_folder(m_home.appending(kName)) {}

std::optional<FileURL> FolderTrash::location() const {
    const auto parent = m_root.open(m_home.path(), O_RDONLY | O_DIRECTORY);
    struct stat status = {};
    if (parent && ::fstatat(parent.get(), kName, &status, AT_SYMLINK_NOFOLLOW) != 0 && errno == ENOENT) {
        return std::nullopt;
    }
    return m_folder;
}

Result<std::vector<FileURL>> FolderTrash::items() const {
    if (!location()) {
        return std::vector<FileURL>();
    }
    auto folder = m_root.open(m_folder.path(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    if (!folder) {
        return PosixError::reading(errno);
    }
    return TrashFolder::items(std::move(folder), m_folder);
}

Result<Descriptor> FolderTrash::openForMoving() {
    const auto parent = m_root.open(m_home.path(), O_RDONLY | O_DIRECTORY);
    if (!parent) {
        return PosixError::writing(errno);
    }
    if (::mkdirat(parent.get(), kName, kOwnerOnly) != 0 && errno != EEXIST) {
        return PosixError::writing(errno);
    }
    Descriptor folder(::openat(parent.get(), kName, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder) {
        return PosixError::writing(errno);
    }
    return folder;
}

Result<std::optional<FileURL>> FolderTrash::moveToTrash(const FileURL& url) {
    if (TrashFolder::endsEarly(url)) {
        return PosixError::writing(EINVAL);
    }
    const auto parent = TrashFolder::openForMoving(m_root, url.deletingLastPathComponent(), LastLink::follow);
    if (!parent) {
        return PosixError::writing(errno);
    }
    const auto trash = openForMoving();
    if (!trash) {
        return trash.error();
    }
    const std::string name(url.lastPathComponent());
    for (int attempt = 0; attempt < TrashFolder::kMaxAttempts; ++attempt) {
        const auto free = TrashNames::candidate(name, attempt, TrashFolder::kMaxNameBytes);
        const auto moved = FileMover::move(parent.get(), name, trash->get(), free);
        if (moved) {
            return std::optional(m_folder.appending(free));
        }
        if (moved.error().underlying != EEXIST) {
            return moved.error();
        }
    }
    return PosixError::writing(EEXIST);
}

Result<bool> FolderTrash::cameFrom(const FileURL& /*inTrash*/, const FileURL& /*original*/) const {
    return true;
}

Result<> FolderTrash::moveOut(const FileURL& inTrash, const FileURL& original) {
    if (!TrashFolder::holdsDirectly(m_folder, inTrash)) {
        return PosixError::writing(EINVAL); // records that were tampered with move nothing else
    }
    const auto trash = TrashFolder::openForMoving(m_root, m_folder, LastLink::keep);
    if (!trash) {
        return PosixError::writing(errno);
    }
    return TrashFolder::moveOut(trash.get(), inTrash, m_root, original);
}

Result<> FolderTrash::deleteItem(const FileURL& inTrash) {
    if (!TrashFolder::holdsDirectly(m_folder, inTrash)) {
        return PosixError::writing(EINVAL);
    }
    const auto folder = m_root.open(m_folder.path(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    if (!folder) {
        return PosixError::writing(errno);
    }
    return FileRemover::removeTree(folder.get(), std::string(inTrash.lastPathComponent()));
}

} // namespace quillane
