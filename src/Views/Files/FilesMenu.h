#pragma once
#include "FileURL.h"
#include "Tables/MenuEntries.h"
#include <functional>
#include <vector>

namespace quillane {

// The menu for these files, in the order of the screen; null when the library has none of them. It belongs to `parent`
// and deletes itself when it closes. `look` is called with the file that is to be looked at. What is to be moved is
// looked up again when it is asked for, since a load may end while the menu is open. The library outlives the menu.
// Main thread only.
QMenu* makeFilesMenu(AppLibrary& library, const std::vector<FileURL>& urls,
                     std::function<void(const FileURL&)> look, MenuEntries::Present present, QWidget* parent);

} // namespace quillane
