#include "BlockCounts.h"
#include <sys/mount.h>
#include <sys/param.h>

namespace quillane {

// Not fstatvfs(), whose counts have 32 bits here. Files are left out: APFS makes them of free room, and on a full volume
// tells that there are none.
std::optional<BlockCounts> BlockCounts::ofVolumeOf(int descriptor) {
    struct statfs told = {};
    if (::fstatfs(descriptor, &told) != 0) {
        return std::nullopt;
    }
    return BlockCounts{.blockSize = told.f_bsize, .blocks = told.f_blocks, .available = told.f_bavail};
}

} // namespace quillane
