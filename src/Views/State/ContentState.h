#pragma once
#include "BulkRemoval.h"
#include "FileURL.h"
#include "LibrarySection.h"
#include "NotificationCenter.h"
#include "Published.h"
#include "State/SortStep.h"
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace quillane {

class PutBack;
class Scenes;

// What the window itself knows: where the user is and what is selected there. Each section keeps its own
// selection, so changing the section loses nothing. Main thread only.
struct ContentState {
    explicit ContentState(LibrarySection initialSection)
        : section(initialSection) {}

    Published<LibrarySection> section;
    // Through which the rest of the program steers the window; null where nobody does.
    NotificationCenter* notifications = nullptr;
    // The other windows of the program; null where this one is alone.
    Scenes* scenes = nullptr;
    // The window's; null where there is none.
    PutBack* putBack = nullptr;
    // From the press of "Put Back" to its end, wherever it was asked for.
    Published<bool> isPuttingBack{false};
    // Rows of the applications table, hidden ones included: what a search hides stays selected.
    Published<std::unordered_set<FileURL>> selection;
    Published<std::unordered_set<std::string>> orphanSelection; // vendors
    Published<std::unordered_set<FileURL>> developerSelection;
    Published<std::unordered_set<FileURL>> fileSelection;
    Published<std::unordered_set<std::string>> duplicateSelection; // ids of groups
    Published<std::unordered_set<FileURL>> startupSelection;
    Published<std::vector<AppComparator>> sortOrder{kInitialAppOrder}; // of the applications table
    Published<std::vector<OrphanComparator>> orphanSortOrder{kInitialOrphanOrder};
    Published<std::vector<DeveloperComparator>> developerSortOrder{kInitialDeveloperOrder};
    Published<std::vector<FileComparator>> fileSortOrder{kInitialFileOrder};
    Published<std::vector<DuplicateComparator>> duplicateSortOrder{kInitialDuplicateOrder};
    Published<std::vector<StartupComparator>> startupSortOrder{kInitialStartupOrder};
    // The file that is looked at, absent while none is: a section sets it, the window opens the panel for it, and
    // closing the panel empties it. While it is set the section lets it follow its selection.
    Published<std::optional<FileURL>> quickLookURL;
    // What waits for its review or is being reviewed: a section stores a request here, the window opens the
    // sheet for it and takes it away when the sheet closes.
    Published<std::optional<BulkRemoval>> removal;
    // Whether the welcome is up, or waits for another sheet to close. Nothing else opens over the window meanwhile:
    // what is asked for waits for its end.
    Published<bool> showOnboarding{false};
};

} // namespace quillane
