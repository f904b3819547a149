#pragma once
#include "Tables/MenuEntries.h"
#include <string>
#include <vector>

namespace quillane {

// The menu for the groups with these ids, in the order of the screen; null when the library has none of them. It
// belongs to `parent` and deletes itself when it closes. Of each group the suggested copy stays, whatever a pane
// says. What is to be moved is looked up again when it is asked for, since a load may end while the menu is open.
// The library outlives the menu. Main thread only.
QMenu* makeDuplicatesMenu(AppLibrary& library, const std::vector<std::string>& ids,
                          MenuEntries::Present present, QWidget* parent);

} // namespace quillane
