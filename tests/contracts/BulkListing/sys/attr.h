#pragma once
// What the Mac's reader of folders takes from its system, for a trial on another. BulkListing.h says who answers.
#include <cstddef>
#include <cstdint>

using attrgroup_t = std::uint32_t;

struct attrlist {
    std::uint16_t bitmapcount;
    std::uint16_t reserved;
    attrgroup_t commonattr;
    attrgroup_t volattr;
    attrgroup_t dirattr;
    attrgroup_t fileattr;
    attrgroup_t forkattr;
};

inline constexpr std::uint16_t ATTR_BIT_MAP_COUNT = 5;
inline constexpr attrgroup_t ATTR_CMN_NAME = 0x1;
inline constexpr attrgroup_t ATTR_CMN_OBJTYPE = 0x8;
inline constexpr attrgroup_t ATTR_CMN_FNDRINFO = 0x4000;
inline constexpr attrgroup_t ATTR_CMN_FLAGS = 0x40000;
inline constexpr attrgroup_t ATTR_CMN_ERROR = 0x20000000;
inline constexpr attrgroup_t ATTR_CMN_RETURNED_ATTRS = 0x80000000;
inline constexpr attrgroup_t ATTR_DIR_MOUNTSTATUS = 0x4;
inline constexpr attrgroup_t ATTR_FILE_ALLOCSIZE = 0x4;
inline constexpr std::uint32_t DIR_MNTSTATUS_MNTPOINT = 0x1;
inline constexpr std::uint32_t UF_HIDDEN = 0x8000;
inline constexpr std::uint32_t SF_FIRMLINK = 0x800000;

extern "C" int getattrlistbulk(int folder, void* list, void* buffer, std::size_t size, std::uint64_t options);
