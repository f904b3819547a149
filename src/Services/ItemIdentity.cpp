#include "ItemIdentity.h"
#include "FileSystem.h"
#include "TextFolding.h"
#include <algorithm>
#include <optional>
#include <utility>

namespace quillane::ItemIdentity {
namespace {

// As far as any volume may take two names for one.
std::u32string namesake(const FileURL& url) {
    return Text::folded(url.lastPathComponent(), {.caseInsensitive = true});
}

using Identity = std::pair<std::uint64_t, std::uint64_t>;

std::optional<Identity> identityOf(const FileSystem& files, const FileURL& url) {
    const auto values = files.resourceValues(url);
    return values ? std::optional(Identity{values->device, values->inode}) : std::nullopt;
}

std::optional<Identity> folderOf(const FileSystem& files, const FileURL& url) {
    return identityOf(files, files.resolvingSymlinks(url.deletingLastPathComponent()));
}

bool areOne(const FileSystem& files, const FileURL& a, const FileURL& b) {
    const auto item = identityOf(files, a);
    const auto folder = folderOf(files, a);
    return item && folder && item == identityOf(files, b) && folder == folderOf(files, b);
}

} // namespace

bool isOneOf(const FileSystem& files, const FileURL& url, const std::set<std::string>& paths) {
    if (paths.contains(url.path())) {
        return true;
    }
    const auto name = namesake(url);
    return std::ranges::any_of(paths, [&](const std::string& path) {
        const FileURL other(path);
        return namesake(other) == name && areOne(files, url, other); // the disk is asked about hardly any
    });
}

} // namespace quillane::ItemIdentity
