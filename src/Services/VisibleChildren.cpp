#include "VisibleChildren.h"
#include "FileSystem.h"
#include <algorithm>

namespace quillane {

std::vector<FileURL> visibleChildren(const Platform& platform, const FileURL& folder) {
    std::vector<FileURL> children;
    const auto entries = platform.files.list(folder);
    if (!entries) {
        return children;
    }
    for (const auto& entry : *entries) {
        if (!entry.isHidden()) {
            children.push_back(folder.appending(entry.name));
        }
    }
    std::ranges::sort(children);
    return children;
}

} // namespace quillane
