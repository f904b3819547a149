#pragma once
#include "InstalledApp.h"
#include "Platform.h"
#include <vector>

// Finds every top-level application bundle of the machine and reads it.
namespace quillane::AppScanner {

// All applications in discovery order, unsorted and unmeasured. Never fails: what can't be read is missing.
// Blocks; any thread but the main thread.
std::vector<InstalledApp> scanMetadata(const Platform& platform);

} // namespace quillane::AppScanner
