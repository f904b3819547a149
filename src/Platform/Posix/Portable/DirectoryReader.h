#pragma once
#include "RawEntry.h"
#include <cstddef>
#include <cstdint>
#include <dirent.h>
#include <sys/stat.h>

namespace quillane {

// Reads the entries of open folders with readdir(3). It keeps no place between batches, so a batch is a whole
// folder, whatever size is asked for. A batch must be used up before the next fill().
class DirectoryReader {
  public:
    static constexpr std::size_t kLargestBatch = std::size_t{256} * 1024;
    static constexpr std::size_t kSmallestBatch = 288;

    enum class Filled { entries, end, failure };

    explicit DirectoryReader(std::size_t largestBatch = kLargestBatch);
    ~DirectoryReader();
    DirectoryReader(const DirectoryReader&) = delete;
    DirectoryReader& operator=(const DirectoryReader&) = delete;

    // Begins to read a folder. After a failure errno tells why.
    Filled fill(int folder, std::size_t bytes);
    // The next entry of the folder, without "." and ".."; false at its end.
    bool next(RawEntry& entry);
    // Whether the folder was read to its end.
    bool exhausted() const { return m_stream == nullptr; }
    std::int64_t position() const { return 0; }
    static bool resume(int folder, std::int64_t position);

  private:
    void close();
    DIR* m_stream = nullptr;
};

// The status of an entry of an open folder, links not followed.
bool statusBelow(int folder, const char* name, struct stat& status);

} // namespace quillane
