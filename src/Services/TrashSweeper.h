#pragma once
#include "Platform.h"
#include "TrashState.h"
#include "UninstallerReport.h"

// Measures the user's Trash and empties it: the one deletion of the whole program, and only of what already
// lies in the Trash. Measuring doubles as the test for Full Disk Access.
namespace quillane::TrashSweeper {

// Refused when the listing fails, for whatever reason. Blocks; any thread but the main thread.
State measure(const Platform& platform);

// Deletes every top-level item for good; one that can't be deleted doesn't stop the others. The report has
// no moves. Blocks; any thread but the main thread.
Uninstaller::Report empty(const Platform& platform);

} // namespace quillane::TrashSweeper
