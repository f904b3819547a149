#pragma once
#include "RawEntry.h"
#include <cstddef>
#include <cstdint>
#include <span>

namespace quillane {

// The entries that one answer of Darwin's getattrlistbulk(2) holds. Written so that it needs no such system: nothing in
// an answer is trusted, and what does not fit together ends it.
class BulkEntries {
  public:
    // The attributes that are understood, by their numbers in <sys/attr.h>; who asks for others gets names alone.
    struct Attribute {
        static constexpr std::uint32_t kName = 0x1;
        static constexpr std::uint32_t kObjectType = 0x8;
        static constexpr std::uint32_t kFinderInfo = 0x4000;
        static constexpr std::uint32_t kFlags = 0x40000;
        static constexpr std::uint32_t kError = 0x20000000;
        static constexpr std::uint32_t kReturned = 0x80000000;
        static constexpr std::uint32_t kFolderMountStatus = 0x4;
        static constexpr std::uint32_t kFileAllocatedSize = 0x4;
    };
    // Of their values, by <sys/vnode.h>, <sys/attr.h> and <sys/stat.h>; the last two by the Finder's flags.
    struct Value {
        static constexpr std::uint32_t kRegular = 1;
        static constexpr std::uint32_t kFolder = 2;
        static constexpr std::uint32_t kLink = 5;
        static constexpr std::uint32_t kSocket = 6;
        static constexpr std::uint32_t kPipe = 7;
        static constexpr std::uint32_t kIsMountPoint = 0x1;
        static constexpr std::uint32_t kIsHidden = 0x8000;
        static constexpr std::uint32_t kIsFirmlink = 0x800000;
        static constexpr std::uint16_t kIsInvisible = 0x4000;
        static constexpr std::uint16_t kHasBundle = 0x2000;
    };

    BulkEntries() = default;
    // So many entries in these bytes, which stay where they are.
    BulkEntries(std::span<const std::byte> answer, std::size_t count)
        : m_rest(answer)
        , m_count(count) {}

    // Passes over so many entries.
    void skip(std::size_t count);
    // The next entry; false at the end. Left out are names that are no names, "." and "..". Of a folder that something is
    // mounted on, and of a firmlink, the name alone is told: the rest is not true of what lies behind it. So it is of an
    // entry with an error.
    bool next(RawEntry& entry);

  private:
    // The bytes of the next entry; empty at the end.
    std::span<const std::byte> take();

    std::span<const std::byte> m_rest;
    std::size_t m_count = 0; // of entries in the rest, as far as was promised
};

} // namespace quillane
