#pragma once
#include "Bytes.h"
#include "Platform.h"
#include "Task.h"
#include "UninstallerReport.h"
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

// The one place that asks for a move to the Trash or back out of it, and that asks a running application to
// quit. Knows nothing of categories, plans or protection: all that has been applied before. Deletes nothing.
namespace quillane::Uninstaller {

// Moves each path in order; a failure never ends the walk. The size credited is sizes[url], else measured
// before the move. Blocks; any thread but the main thread.
Report moveToTrash(const Platform& platform, const std::vector<FileURL>& urls,
                   const std::unordered_map<FileURL, Bytes>& sizes);

// Takes each item back to where it lived, making missing parent folders. Never overwrites, and takes nothing that
// by the record of the Trash came from elsewhere. Creates no moves
// and reclaims nothing. Blocks; any thread but the main thread.
Report putBack(const Platform& platform, const std::vector<TrashMove>& moves);

// Asks every running application of that identifier to quit, and waits up to 3 seconds in steps of 100 ms.
// True when nothing of it runs any more, and at once when there is nothing to do. Main thread.
Task<bool> quitIfRunning(const Platform& platform, std::optional<std::string> bundleIdentifier);

} // namespace quillane::Uninstaller
