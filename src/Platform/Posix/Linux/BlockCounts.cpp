#include "BlockCounts.h"
#include <sys/statvfs.h>

namespace quillane {

std::optional<BlockCounts> BlockCounts::ofVolumeOf(int descriptor) {
    struct statvfs told = {};
    if (::fstatvfs(descriptor, &told) != 0) {
        return std::nullopt;
    }
    BlockCounts counts{.blockSize = told.f_frsize, .blocks = told.f_blocks, .available = told.f_bavail};
    if (told.f_files > 0) { // some file systems count none
        counts.availableFiles = told.f_favail;
    }
    return counts;
}

} // namespace quillane
