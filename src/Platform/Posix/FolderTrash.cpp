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

// Links on the way to the folder are followed.
Descriptor openFolder(const Volume& volume, const std::string& path) {
    return volume.open(path, O_RDONLY | O_DIRECTORY);
}

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
    const auto parent = openFolder(m_root, url.deletingLastPathComponent().path());
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
    const auto trash = m_root.open(m_folder.path(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    const auto parent =
        trash ? openFolder(m_root, original.deletingLastPathComponent().path()) : Descriptor();
    if (!parent) {
        return PosixError::writing(errno);
    }
    return FileMover::move(trash.get(), std::string(inTrash.lastPathComponent()), parent.get(),
                           std::string(original.lastPathComponent()));
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
