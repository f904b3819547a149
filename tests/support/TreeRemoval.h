#pragma once
#include <string>

namespace quillane {

// Removes a folder of the machine with everything below it, whatever its depth and permissions. Links are
// removed, not followed. What can't be removed stays.
void removeTree(const std::string& path);

} // namespace quillane
