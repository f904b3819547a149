#include "FileStatus.h"
#include "RawEntry.h"
#include "StatusTime.h"

namespace quillane {
namespace {

constexpr Bytes kBlock = 512; // the unit of st_blocks on every system, whatever the volume's own blocks

} // namespace

Bytes allocatedOf(const struct stat& status) {
    return Bytes{status.st_blocks} * kBlock;
}

ResourceValues resourceValuesOf(const struct stat& status) {
    ResourceValues values;
    values.type = entryTypeOfMode(status.st_mode);
    values.fileSize = status.st_size;
    if (values.type == EntryType::regular) {
        values.allocated = allocatedOf(status);
        values.totalAllocated = values.allocated;
    }
    values.contentModified = modifiedOf(status);
    values.device = static_cast<std::uint64_t>(status.st_dev);
    values.inode = static_cast<std::uint64_t>(status.st_ino);
    return values;
}

} // namespace quillane
