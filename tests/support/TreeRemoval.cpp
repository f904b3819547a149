#include "TreeRemoval.h"
#include "Descriptor.h"
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace quillane {
namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// The names in an open folder, without "." and "..".
std::vector<std::string> namesIn(int folder) {
    std::vector<std::string> names;
    const int again = ::openat(folder, ".", kFolderFlags); // the stream closes it
    const std::unique_ptr<DIR, decltype(&::closedir)> stream(again < 0 ? nullptr : ::fdopendir(again),
                                                             &::closedir);
    while (const dirent* entry =
               stream ? ::readdir(stream.get()) : nullptr) { // NOLINT(concurrency-mt-unsafe)
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
    }
    return names;
}

// Removes the tree below an open folder with one descriptor, so that depth is no matter.
void removeBelow(Descriptor folder) {
    std::vector<std::vector<std::string>> levels; // the names that are left in each folder on the way
    levels.push_back(namesIn(folder.get()));
    while (true) {
        auto& left = levels.back();
        if (left.empty()) {
            levels.pop_back();
            if (levels.empty()) {
                return;
            }
            folder = Descriptor(::openat(folder.get(), "..", kFolderFlags));
            ::unlinkat(folder.get(), levels.back().back().c_str(), AT_REMOVEDIR);
            levels.back().pop_back();
        } else if (::unlinkat(folder.get(), left.back().c_str(), 0) == 0) {
            left.pop_back();
        } else {
            struct stat status = {};
            if (::fstatat(folder.get(), left.back().c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                S_ISDIR(status.st_mode)) {
                (void)::fchmodat(folder.get(), left.back().c_str(), S_IRWXU, 0);
            }
            Descriptor child(::openat(folder.get(), left.back().c_str(), kFolderFlags));
            if (child) {
                folder = std::move(child);
                levels.push_back(namesIn(folder.get()));
            } else {
                left.pop_back();
            }
        }
    }
}

} // namespace

void removeTree(const std::string& path) {
    ::chmod(path.c_str(), S_IRWXU);
    Descriptor folder(::open(path.c_str(), kFolderFlags));
    if (folder) {
        removeBelow(std::move(folder));
    }
    ::rmdir(path.c_str());
}

} // namespace quillane
