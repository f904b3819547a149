// What is the same on every system; the rest lies in the folder of each.
#include "BlockCounts.h"
#include "PosixError.h"
#include <cerrno>

namespace quillane {

Result<VolumeSpace> BlockCounts::space() const {
    VolumeSpace space;
    if (__builtin_mul_overflow(available, blockSize, &space.free) ||
        __builtin_mul_overflow(blocks, blockSize, &space.size)) {
        return PosixError::reading(EOVERFLOW);
    }
    return space;
}

bool BlockCounts::hasRoomFor(std::uint64_t bytes) const {
    return blockSize > 0 && available >= bytes / blockSize + (bytes % blockSize > 0 ? 1 : 0);
}

} // namespace quillane
