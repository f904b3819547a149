#pragma once
#include "Tables/MenuEntries.h"
#include <string>
#include <vector>

namespace quillane {

// The menu for what these vendors left behind, in the order of the screen; null when there is none of it. It
// belongs to `parent` and deletes itself when it closes. What is to be moved is looked up again when it is
// asked for, since a scan may go on while the menu is open. The library outlives the menu. Main thread only.
QMenu* makeOrphansMenu(AppLibrary& library, const std::vector<std::string>& vendors,
                       MenuEntries::Present present, QWidget* parent);

} // namespace quillane
