#pragma once
#include "FileSystem.h"
#include <cstddef>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace quillane {

// Texts of files that were read, in memory, up to a bound: what was not asked for the longest goes first. Any thread.
class TextCache {
  public:
    using Text = std::shared_ptr<const std::string>;

    // Counts the texts and what it takes to keep one.
    explicit TextCache(std::size_t mostBytes)
        : m_mostBytes(mostBytes) {}

    // Null for a file that is not kept, or that has changed since.
    Text find(const ResourceValues& file);
    // A text that is larger than all that is kept together is not kept.
    void keep(const ResourceValues& file, Text text);

    std::size_t bytes() const;

  private:
    // A file, and what tells that it has changed.
    struct Key {
        explicit Key(const ResourceValues& file)
            : device(file.device)
            , inode(file.inode)
            , size(file.fileSize)
            , modified(file.contentModified.secondsSinceReferenceDate) {}
        auto operator<=>(const Key&) const = default;

        std::uint64_t device;
        std::uint64_t inode;
        Bytes size;
        double modified;
    };
    struct Entry {
        Key key;
        Text text;
    };
    using Entries = std::list<Entry>;

    static std::size_t costOf(const Text& text);
    void forget(std::map<Key, Entries::iterator>::iterator known);

    const std::size_t m_mostBytes;
    mutable std::mutex m_mutex; // guards the rest
    Entries m_entries;          // asked for last first
    std::map<Key, Entries::iterator> m_known;
    std::size_t m_bytes = 0;
};

} // namespace quillane
