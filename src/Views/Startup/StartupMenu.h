#pragma once
#include "Tables/MenuEntries.h"
#include <vector>

namespace quillane {

// The menu for these items, in the order of the screen; null when the library has none of them. It belongs to
// `parent` and deletes itself when it closes. What is to be moved is looked up again when it is asked for, since the
// list may be read anew while the menu is open. The library outlives the menu. Main thread only.
QMenu* makeStartupMenu(AppLibrary& library, const std::vector<FileURL>& urls, MenuEntries::Present present,
                       QWidget* parent);

} // namespace quillane
