#include "Duplicates/Copies.h"
#include "AppLibrary.h"
#include <algorithm>

namespace quillane::Copies {

std::vector<FileURL> urlsOf(const std::vector<DuplicateGroup>& groups) {
    std::vector<FileURL> urls;
    for (const auto& group : groups) {
        for (const auto& file : group.files) {
            urls.push_back(file.url);
        }
    }
    return urls;
}

std::optional<FileURL> chosenOf(const DuplicateGroup& group, const std::optional<FileURL>& keeper) {
    if (keeper && std::ranges::find(group.files, *keeper, &UserFile::url) != group.files.end()) {
        return keeper;
    }
    const auto suggested = group.suggestedKeeper();
    return suggested ? std::optional(suggested->url) : std::nullopt;
}

bool anyCanGo(const AppLibrary& library, const DuplicateGroup& group, const std::optional<FileURL>& keeper) {
    const auto chosen = chosenOf(group, keeper);
    return std::ranges::any_of(group.files, [&](const UserFile& file) {
        return file.url != chosen && !library.isProtected(file.url);
    });
}

bool anyCanGo(const AppLibrary& library, const std::vector<DuplicateGroup>& groups) {
    return std::ranges::any_of(
        groups, [&](const DuplicateGroup& group) { return anyCanGo(library, group, std::nullopt); });
}

} // namespace quillane::Copies
