#include "DiskSync.h"
#include <unistd.h>

namespace quillane::DiskSync {

bool write(int file) {
    return ::fsync(file) == 0;
}

} // namespace quillane::DiskSync
