#include "TrashFolder.h"
#include "DirectoryReader.h"
#include "FileMover.h"
#include "PosixError.h"
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>

namespace quillane::TrashFolder {
namespace {

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

} // namespace

Result<std::vector<FileURL>> items(Descriptor folder, const FileURL& folderURL) {
    const std::unique_ptr<DIR, CloseDirectory> directory(::fdopendir(folder.get()));
    if (!directory) {
        return PosixError::reading(errno);
    }
    folder.release();
    std::vector<FileURL> found;
    for (;;) {
        errno = 0;
        // NOLINTNEXTLINE(concurrency-mt-unsafe): nobody else reads this directory
        const dirent* entry = ::readdir(directory.get());
        if (entry == nullptr) {
            break;
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            found.push_back(folderURL.appending(name));
        }
    }
    if (errno != 0) {
        return PosixError::reading(errno);
    }
    return found;
}

bool isEmpty(int folder) {
    DirectoryReader reader(DirectoryReader::kSmallestBatch);
    RawEntry entry;
    for (;;) {
        const auto filled = reader.fill(folder, DirectoryReader::kSmallestBatch);
        if (filled != DirectoryReader::Filled::entries) {
            return filled == DirectoryReader::Filled::end;
        }
        if (reader.next(entry)) {
            return false;
        }
        if (reader.exhausted()) {
            return true;
        }
    }
}

bool isTopOfVolume(int folder) {
    struct stat status = {};
    struct stat above = {};
    return ::fstat(folder, &status) == 0 && ::fstatat(folder, "..", &above, 0) == 0 &&
           (status.st_dev != above.st_dev || status.st_ino == above.st_ino); // the root is its own parent
}

bool endsEarly(const FileURL& url) {
    return url.path().find('\0') != std::string::npos;
}

bool holdsDirectly(const FileURL& folder, const FileURL& url) {
    const auto name = url.lastPathComponent();
    return name != "." && name != ".." && !endsEarly(url) && url.deletingLastPathComponent() == folder &&
           url != folder;
}

Descriptor openForMoving(const Volume& volume, const FileURL& folder, LastLink lastLink) {
    const int link = lastLink == LastLink::keep ? O_NOFOLLOW : 0;
    auto opened = volume.open(folder.path(), O_RDONLY | O_DIRECTORY | link);
    if (!opened && (errno == EACCES || errno == EPERM)) {
        opened = volume.open(folder.path(), FileMover::kOpenUnlisted | link);
    }
    return opened;
}

Result<> moveOut(int trash, const FileURL& inTrash, const Volume& volume, const FileURL& original) {
    if (endsEarly(inTrash) || endsEarly(original)) {
        return PosixError::writing(EINVAL);
    }
    const auto parent = openForMoving(volume, original.deletingLastPathComponent(), LastLink::follow);
    if (!parent) {
        return PosixError::writing(errno);
    }
    return FileMover::move(trash, std::string(inTrash.lastPathComponent()), parent.get(),
                           std::string(original.lastPathComponent()));
}

} // namespace quillane::TrashFolder
