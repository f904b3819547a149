#pragma once
#include "InstalledApp.h"
#include "Tables/MenuEntries.h"
#include <QString>
#include <vector>

class QMenu;
class QWidget;

namespace quillane {

class AppLibrary;

// What can be done with applications, told and guarded alike in the menus and in the panes. Main thread only.
namespace AppActions {

using MenuEntries::Present;

// Whether the application may be asked for: it is no part of the system, it is measured, so that the review
// knows all its files, and it is not protected.
bool canUninstall(const AppLibrary& library, const InstalledApp& app);
// Those that a request for all of them would take: what is part of the system or protected is left out.
std::vector<InstalledApp> removable(const AppLibrary& library, const std::vector<InstalledApp>& apps);

// "Clean Cache (1.26 GB)"
QString cleanCacheTitle(Bytes bytes);
// "Uninstall 4 Apps…"
QString uninstallTitle(std::size_t count);

// The menu for these applications, in the order of the screen; for none, that of the empty table. It belongs to
// `parent` and deletes itself when it closes. Its entries look the applications up again when they are chosen,
// since a scan may go on while the menu is open. The library outlives the menu.
QMenu* makeMenu(AppLibrary& library, const std::vector<InstalledApp>& apps, Present present, QWidget* parent);

} // namespace AppActions
} // namespace quillane
