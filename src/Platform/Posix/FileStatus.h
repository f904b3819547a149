#pragma once
#include "FileSystem.h"
#include <sys/stat.h>

namespace quillane {

// Allocated on disk, data alone.
Bytes allocatedOf(const struct stat& status);
// All that a status tells.
ResourceValues resourceValuesOf(const struct stat& status);

} // namespace quillane
