#pragma once
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <sys/types.h>

namespace quillane {

// One file, folder or link as it lies on the disk.
struct Piece {
    mode_t mode = 0;           // kind and permissions
    std::int64_t modified = 0; // in nanoseconds since 1970
    std::string content;       // of a file its bytes, of a link its text
    friend bool operator==(const Piece&, const Piece&) = default;
};

// A piece and all that lies below it, by the path from there: "" is the piece itself, "a/b" lies in its folder "a".
// Empty when nothing is there.
using TreeContent = std::map<std::string, Piece>;

// Links are not followed. Ends the program when something can't be read: nothing could be said then.
TreeContent treeAt(const std::filesystem::path& path);
// The part of a tree at a path of it; empty when there is none.
TreeContent partOf(const TreeContent& tree, const std::string& path);
// What is left of a tree when some of its pieces were deleted. A folder that lost a piece has another date.
bool isRemainderOf(const TreeContent& remainder, const TreeContent& tree);

} // namespace quillane
