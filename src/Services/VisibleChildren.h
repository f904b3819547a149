#pragma once
#include "FileURL.h"
#include "Platform.h"
#include <vector>

namespace quillane {

// What lies directly in a folder, sorted by path, less what is hidden. Empty for a folder that can't be listed. Blocks;
// any thread.
std::vector<FileURL> visibleChildren(const Platform& platform, const FileURL& folder);

} // namespace quillane
