#pragma once
#include <functional>
#include <map>
#include <string>
#include <vector>

// What some of the Mac's calls answer here, and what was asked of them. One test at a time.
namespace quillane::SystemCalls {

struct Answers {
    // In place of a move; errno tells why not. Without it the system's own is made.
    std::function<bool(int fromFolder, const char* from, int toFolder, const char* to)> move;
    std::vector<std::string> mounts;
    std::map<std::string, std::string>
        paths; // of open folders, by where they really are; the others are told as they are
};

// As they stand before each test: nothing answered otherwise.
Answers& answers();
// Pools that the calling thread holds.
int heldPools();

} // namespace quillane::SystemCalls
