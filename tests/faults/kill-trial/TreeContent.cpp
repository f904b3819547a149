#include "TreeContent.h"
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sys/stat.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void giveUp(const fs::path& path) {
    std::perror(path.c_str());
    std::_Exit(3);
}

std::string contentOf(const fs::path& path, mode_t mode) {
    if (S_ISLNK(mode)) {
        return fs::read_symlink(path).string();
    }
    if (!S_ISREG(mode)) {
        return {};
    }
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        giveUp(path);
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

Piece pieceAt(const fs::path& path) {
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0) {
        giveUp(path);
    }
    return {status.st_mode, status.st_mtim.tv_sec * std::int64_t{1'000'000'000} + status.st_mtim.tv_nsec,
            contentOf(path, status.st_mode)};
}

} // namespace

TreeContent treeAt(const fs::path& path) {
    TreeContent tree;
    if (!fs::exists(fs::symlink_status(path))) {
        return tree;
    }
    tree.emplace("", pieceAt(path));
    if (S_ISDIR(tree.begin()->second.mode)) {
        for (const auto& entry : fs::recursive_directory_iterator(path)) {
            tree.emplace(entry.path().lexically_relative(path).string(), pieceAt(entry.path()));
        }
    }
    return tree;
}

TreeContent partOf(const TreeContent& tree, const std::string& path) {
    TreeContent part;
    const auto root = tree.find(path);
    if (root == tree.end()) {
        return part;
    }
    part.emplace("", root->second);
    const std::string prefix = path + "/";
    for (auto at = tree.lower_bound(prefix); at != tree.end() && at->first.starts_with(prefix); ++at) {
        part.emplace(at->first.substr(prefix.size()), at->second);
    }
    return part;
}

bool isRemainderOf(const TreeContent& remainder, const TreeContent& tree) {
    return std::ranges::all_of(remainder, [&](const auto& entry) {
        const auto before = tree.find(entry.first);
        return before != tree.end() && (S_ISDIR(entry.second.mode) ? before->second.mode == entry.second.mode
                                                                   : before->second == entry.second);
    });
}

} // namespace quillane
