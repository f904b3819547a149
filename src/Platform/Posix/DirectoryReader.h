#pragma once
#include "FileSystem.h"
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace quillane {

// Reads the entries of open folders, many at a time into one buffer that serves a whole walk.
class DirectoryReader {
  public:
    struct Entry {
        const char* name = nullptr; // ends with a NUL; lives until the next read
        std::size_t length = 0;
        std::optional<EntryType> type; // absent where the file system does not say
        std::string_view view() const { return {name, length}; }
    };

    DirectoryReader();

    // Reads on in the open folder. False at its end and when it can't be read: errno is then 0 or the reason.
    bool fill(int folder);
    // The next entry of what was read, "." and ".." left out; false when it is used up.
    bool next(Entry& entry);

  private:
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_filled = 0;
    std::size_t m_at = 0;
};

} // namespace quillane
