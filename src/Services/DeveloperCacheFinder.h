#pragma once
#include "DevCacheItem.h"
#include "Platform.h"
#include "StopToken.h"
#include "TaskRunner.h"
#include <vector>

// Tool caches, build products and the dependency folders of projects, and what each costs to remove. Only
// measures and describes.
namespace quillane::DeveloperCacheFinder {

// What stands at the known places of the home folder and, below the usual project folders, every node_modules,
// .venv and venv; largest first, the known places before dependency folders of equal size. What is missing,
// can't be read or takes no space gives nothing. A stop ends the walk: the known places and the dependency
// folders found so far are the result. Blocks, and may take minutes; idle threads of the pool of that priority
// help. Any thread but the main one.
std::vector<DevCacheItem> find(const Platform& platform, Priority priority, const StopToken& stop = {});

} // namespace quillane::DeveloperCacheFinder
