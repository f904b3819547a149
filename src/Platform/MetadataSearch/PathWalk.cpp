#include "PathWalk.h"
#include <vector>

namespace quillane {

void walkPaths(const FileSystem& files, const FileURL& root, PathVisitor visit, const StopToken& stop) {
    std::vector<FileURL> pending = {root};
    while (!pending.empty() && !stop.stopRequested()) {
        const FileURL folder = std::move(pending.back());
        pending.pop_back();
        const auto entries = files.list(folder);
        if (!entries) {
            continue;
        }
        std::string path = folder.path() == "/" ? "/" : folder.path() + "/";
        const std::size_t length = path.size();
        for (const auto& entry : *entries) {
            path.resize(length);
            path += entry.name;
            if (visit(path, entry) && entry.type == EntryType::directory) {
                pending.emplace_back(path);
            }
        }
    }
}

} // namespace quillane
