#pragma once
#include "BulkEntries.h"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sys/stat.h>

namespace quillane {

// Reads the entries of open folders in batches through one buffer, whichever folder is at hand: the place in
// each folder is kept by its descriptor. A batch must be used up before the next fill().
class DirectoryReader {
  public:
    // The largest batch, in bytes of the buffer.
    static constexpr std::size_t kLargestBatch = std::size_t{256} * 1024;
    // The smallest that can hold any entry: a name has up to 255 UTF-16 units, thus 765 bytes.
    static constexpr std::size_t kSmallestBatch = 1024;

    enum class Filled { entries, end, failure };
    // How far a folder has been read. The system keeps that with the descriptor and does not tell it.
    struct Place {
        std::uint64_t entries; // that came so far
        bool isAnew;           // the descriptor is another one, which begins with the first
    };

    explicit DirectoryReader(std::size_t largestBatch = kLargestBatch, ListingDetails details = {});

    // Reads the next batch, of at most `bytes`, of a folder that has been read so far. After a failure errno tells why;
    // EDEADLK is a folder that lies in a cloud alone, where the thread may not fetch it.
    Filled fill(int folder, std::size_t bytes, const Place& place = {});
    // The next entry of the batch; false when it is used up.
    bool next(RawEntry& entry) { return m_batch.next(entry); }
    // Whether the batch reached the end of the folder for certain, so that no fill() need ask.
    bool exhausted() const { return false; }
    // How far the folder has been read with the batch, which was filled at this place.
    Place placeAfter(const Place& before) const {
        return {.entries = before.entries + m_count, .isAnew = false};
    }
    // Goes on from there on another descriptor of the same folder: what comes first is passed over, as often as something
    // came before. Entries that join or leave the folder meanwhile may be told twice or not at all.
    static bool resume(int folder, Place& place);

  private:
    // As the call of the system; 0 at the end, -1 with errno.
    int read(int folder, std::size_t bytes);

    std::unique_ptr<std::byte[]> m_buffer;
    std::size_t m_size; // of the buffer
    ListingDetails m_details;
    BulkEntries m_batch;
    std::size_t m_count = 0; // of its entries, those that are left out among them
};

// The status of an entry of an open folder, links not followed.
bool statusBelow(int folder, const char* name, struct stat& status);

} // namespace quillane
