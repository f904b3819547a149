#pragma once
#include "FileURL.h"
#include <cstddef>
#include <deque>
#include <mutex>
#include <sys/types.h>
#include <unordered_map>

namespace quillane {

// What this process has brought into a Trash whose records nobody else may read: which item lies where. The names there
// are given anew as the Trash is emptied. Kept in memory alone, and no more than some; the oldest go first. Any thread.
class LandedItems {
  public:
    // A sweep of very many items and its undo; a path and two numbers each.
    static constexpr std::size_t kMost = 65536;

    explicit LandedItems(std::size_t most = kMost)
        : m_most(most) {}

    // Notes what lies there now. What was noted of the place before is forgotten, also when it can't be asked.
    void note(const FileURL& place);
    // False when something else lies there now than was noted, or nothing. True where nothing was noted, and where it
    // can't be asked.
    bool mayStillLie(const FileURL& place) const;

  private:
    struct Identity {
        dev_t device = 0;
        ino_t inode = 0;

        friend bool operator==(const Identity&, const Identity&) = default;
    };

    void forget(const FileURL& place);

    const std::size_t m_most;
    mutable std::mutex m_mutex;
    std::unordered_map<FileURL, Identity> m_items;
    std::deque<FileURL> m_order; // the oldest in front
};

} // namespace quillane
