#pragma once
#include <sys/stat.h>

namespace quillane {

// DirectoryEntry::isFlaggedHidden as a status tells it. Each system's own.
bool isFlaggedHidden(const struct stat& status);

} // namespace quillane
