#pragma once
#include "DevCacheItem.h"
#include "DuplicateGroup.h"
#include "InstalledApp.h"
#include "OrphanGroup.h"
#include "StartupItem.h"
#include "UserFile.h"
#include <string>
#include <unordered_set>
#include <vector>

namespace quillane {

class AppLibrary;

// What is selected, as the library has it now. What is no longer there counts as not selected; what a search
// hides stays selected. In the order of the library, each once: of two with one location or one id the first counts. They
// read the library and are observed. Main thread only.
std::vector<InstalledApp> selectedApps(const AppLibrary& library, const std::unordered_set<FileURL>& urls);
// Whole groups, the largest first.
std::vector<OrphanGroup> selectedOrphanGroups(const AppLibrary& library,
                                              const std::unordered_set<std::string>& vendors);
std::vector<DevCacheItem> selectedDeveloperItems(const AppLibrary& library,
                                                 const std::unordered_set<FileURL>& urls);
std::vector<UserFile> selectedFiles(const AppLibrary& library, const std::unordered_set<FileURL>& urls);
std::vector<DuplicateGroup> selectedDuplicateGroups(const AppLibrary& library,
                                                    const std::unordered_set<std::string>& ids);
std::vector<StartupItem> selectedStartupItems(const AppLibrary& library,
                                              const std::unordered_set<FileURL>& urls);

} // namespace quillane
