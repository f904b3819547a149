#include "BlockCounts.h"
#include <sys/statvfs.h>

namespace quillane {

std::optional<BlockCounts> BlockCounts::ofVolumeOf(int descriptor) {
    struct statvfs told = {};
    if (::fstatvfs(descriptor, &told) != 0) {
        return std::nullopt;
    }
    return BlockCounts{.blockSize = told.f_frsize, .blocks = told.f_blocks, .available = told.f_bavail};
}

} // namespace quillane
