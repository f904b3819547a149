#include "DiskSync.h"
#include <fcntl.h>
#include <unistd.h>

namespace quillane::DiskSync {

// Here fsync() ends at the disk's cache. Not every file system knows how to go on.
bool write(int file) {
    return ::fcntl(file, F_FULLFSYNC) == 0 || ::fsync(file) == 0;
}

} // namespace quillane::DiskSync
