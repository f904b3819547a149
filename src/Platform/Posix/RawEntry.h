#pragma once
#include "FileSystem.h"
#include <cstddef>
#include <optional>
#include <string_view>

namespace quillane {

// One entry as its folder tells it, without a look at the entry itself.
struct RawEntry {
    const char* name = nullptr; // ends with a NUL; lives until the reader goes on
    std::size_t length = 0;
    std::optional<EntryType> type; // nothing where the file system keeps no types in its folders
    // What only some systems tell of an entry, and only who asks: see ListingDetails.
    std::optional<Bytes> allocated; // of a regular file
    bool isFlaggedHidden = false;   // as DirectoryEntry has it
    bool isMarkedAsPackage = false; // as WalkEntry has it
};

// What a listing is to tell of its entries besides names and types, where the system can.
struct ListingDetails {
    bool sizes = false;
    bool marks = false; // the two of RawEntry
};

// The name under which a volume that keeps no attributes of its own has those of another file.
constexpr bool isAppleDouble(std::string_view name) {
    return name.size() > 2 && name.starts_with("._");
}

// From d_type of a folder's entry.
std::optional<EntryType> entryTypeOfListed(unsigned char type);
// From st_mode of a status.
EntryType entryTypeOfMode(unsigned int mode);

} // namespace quillane
