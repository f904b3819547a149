#include "TrashFolder.h"
#include "DirectoryReader.h"
#include "PosixError.h"
#include <cerrno>
#include <dirent.h>
#include <memory>
#include <string_view>

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

bool holdsDirectly(const FileURL& folder, const FileURL& url) {
    const auto name = url.lastPathComponent();
    return name != "." && name != ".." && url.deletingLastPathComponent() == folder && url != folder;
}

} // namespace quillane::TrashFolder
