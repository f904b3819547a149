#pragma once
#include "RawEntry.h"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sys/stat.h>

namespace quillane {

// Reads the entries of open folders in batches through one buffer, whichever folder is at hand: the place in
// each folder is kept by its descriptor. A batch must be used up before the next fill().
class DirectoryReader {
  public:
    // The largest batch, in bytes of the buffer. 256 KiB holds about 8,000 entries; more gained nothing.
    static constexpr std::size_t kLargestBatch = std::size_t{256} * 1024;
    // The smallest that can hold any entry, a name of 255 bytes among them.
    static constexpr std::size_t kSmallestBatch = 288;

    enum class Filled { entries, end, failure };
    // How far a folder has been read.
    struct Place {
        std::int64_t position; // as the file system has it
    };

    // Folders tell no details here.
    explicit DirectoryReader(std::size_t largestBatch = kLargestBatch, ListingDetails details = {});

    // Reads the next batch, of at most `bytes`, of a folder that has been read so far. After a failure errno tells why.
    Filled fill(int folder, std::size_t bytes, const Place& place = {});
    // The next entry of the batch, without "." and ".."; false when it is used up.
    bool next(RawEntry& entry);
    // Whether the batch reached the end of the folder for certain, so that no fill() need ask.
    bool exhausted() const { return false; }
    // How far the folder has been read with the batch, which was filled at this place and is used up.
    Place placeAfter(const Place& /*before*/) const { return {m_position}; }
    // Goes on from there on another descriptor of the same folder.
    static bool resume(int folder, Place& place);

  private:
    std::unique_ptr<std::byte[]> m_buffer;
    std::size_t m_size;      // of the buffer
    std::size_t m_end = 0;   // of the batch in the buffer
    std::size_t m_begin = 0; // of its next entry
    std::int64_t m_position = 0;
};

// The status of an entry of an open folder, links not followed, nothing mounted for it.
bool statusBelow(int folder, const char* name, struct stat& status);

} // namespace quillane
