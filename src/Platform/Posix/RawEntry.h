#pragma once
#include "FileSystem.h"
#include <cstddef>
#include <optional>

namespace quillane {

// One entry as its folder tells it, without a look at the entry itself.
struct RawEntry {
    const char* name = nullptr; // ends with a NUL; lives until the reader goes on
    std::size_t length = 0;
    std::optional<EntryType> type; // nothing where the file system keeps no types in its folders
};

// From d_type of a folder's entry.
std::optional<EntryType> entryTypeOfListed(unsigned char type);
// From st_mode of a status.
EntryType entryTypeOfMode(unsigned int mode);

} // namespace quillane
