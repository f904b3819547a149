#pragma once
#include "BulkAnswer.h"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

// Answers getattrlistbulk(2) in the Mac's stead, from what really lies in a folder, by the same rules: so the Mac's
// reader runs over a disk of this machine. Which entries come without a type or with an error is chosen by the
// environment: QUILLANE_LISTING may be "untyped" or "errors".
namespace quillane::BulkListing {

// What only a Mac's volume could say of an item, by its device and inode. Of files and folders that exist.
struct Marks {
    std::uint32_t flags = 0;
    std::uint16_t finderFlags = 0;
    std::uint32_t mountStatus = 0;
    std::optional<std::int64_t> allocated = std::nullopt; // in the place of the true value
};
void mark(const std::string& path, const Marks& marks);
void unmarkAll();

// The error of each call from now on that asks for more than names and types; 0 for none.
void refuseDetails(int error);
// How many calls were made that asked for these, since the last time that this was asked.
struct Calls {
    int all = 0;
    int forSizes = 0;
    int forMarks = 0;
};
Calls takeCalls();

} // namespace quillane::BulkListing
