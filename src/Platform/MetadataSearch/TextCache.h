#pragma once
#include "Clock.h"
#include "DocumentKind.h"
#include "FileSystem.h"
#include <chrono>
#include <compare>
#include <cstddef>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace quillane {

// Texts of files that were read, in memory, up to a bound. What a search has asked for lately stays, and when all that
// is kept was, a further text is not kept: searches ask for the same files again and again in about the same order, and
// if each of them displaced what was not asked for the longest, that would be what the next one asks for first. Any
// thread.
class TextCache {
  public:
    using Text = std::shared_ptr<const std::string>;

    // How long a text displaces no other that was asked for.
    static constexpr Duration kLately = std::chrono::minutes(10);

    // Counts the texts and what it takes to keep one. `clock` outlives this.
    TextCache(std::size_t mostBytes, const Clock& clock)
        : m_mostBytes(mostBytes)
        , m_clock(clock) {}

    // Null for a file that is not kept, that has changed since, that was read as another kind, or whose text has had
    // its time.
    Text find(const ResourceValues& file, DocumentKind kind);
    // Until `end`; a text that is larger than all that is kept together is not kept.
    void keep(const ResourceValues& file, DocumentKind kind, Text text, Instant end = Instant::max());

    std::size_t bytes() const;

  private:
    // A file, what tells that it has changed, and how it was read.
    struct Key {
        Key(const ResourceValues& file, DocumentKind read)
            : device(file.device)
            , inode(file.inode)
            , size(file.fileSize)
            , modified(file.contentModified.secondsSinceReferenceDate)
            , kind(read) {}
        auto operator<=>(const Key&) const = default;

        std::uint64_t device;
        std::uint64_t inode;
        Bytes size;
        double modified;
        DocumentKind kind;
    };
    struct Entry {
        Key key;
        Text text;
        Instant end;
        Instant asked; // for the last time
    };
    using Entries = std::list<Entry>;

    static std::size_t costOf(const Text& text);
    bool makeRoom(std::size_t bytes, Instant now);
    void forget(std::map<Key, Entries::iterator>::iterator known);

    const std::size_t m_mostBytes;
    const Clock& m_clock;
    mutable std::mutex m_mutex; // guards the rest
    Entries m_entries;          // asked for last first
    std::map<Key, Entries::iterator> m_known;
    std::size_t m_bytes = 0;
};

} // namespace quillane
