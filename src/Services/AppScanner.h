#pragma once
#include "InstalledApp.h"
#include "Platform.h"
#include <optional>
#include <string>
#include <vector>

// Finds every top-level application bundle of the machine and reads it.
namespace quillane::AppScanner {

// All applications in discovery order, unsorted and unmeasured. Never fails: what can't be read is missing.
// Blocks; any thread but the main thread.
std::vector<InstalledApp> scanMetadata(const Platform& platform);

// The identifier that a bundle gives itself; nothing when it gives none or can't be read. Blocks; any thread but the
// main thread.
std::optional<std::string> bundleIdentifier(const Platform& platform, const FileURL& bundle);

} // namespace quillane::AppScanner
