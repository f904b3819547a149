#pragma once
#include <string>

namespace quillane::CloudItem {

// FileSystem::isAwaitingDownload() for a path of the machine. Each system defines it.
bool isAwaitingDownload(const std::string& path);

} // namespace quillane::CloudItem
