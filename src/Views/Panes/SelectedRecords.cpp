#include "Panes/SelectedRecords.h"
#include "AppLibrary.h"
#include <algorithm>
#include <iterator>

namespace quillane {

namespace {

template <class Record, class Key>
std::vector<Record> selectedAmong(const std::vector<Record>& records, Key Record::* keyOf,
                                  const std::unordered_set<Key>& keys) {
    std::vector<Record> selected;
    std::unordered_set<Key> seen;
    for (const auto& record : records) {
        if (keys.contains(record.*keyOf) && seen.insert(record.*keyOf).second) {
            selected.push_back(record);
        }
    }
    return selected;
}

} // namespace

std::vector<InstalledApp> selectedApps(const AppLibrary& library, const std::unordered_set<FileURL>& urls) {
    return selectedAmong(*library.apps, &InstalledApp::url, urls);
}

std::vector<OrphanGroup> selectedOrphanGroups(const AppLibrary& library,
                                              const std::unordered_set<std::string>& vendors) {
    std::vector<OrphanItem> items; // of the selected vendors alone: the others need no grouping
    std::ranges::copy_if(*library.orphans, std::back_inserter(items),
                         [&](const OrphanItem& item) { return vendors.contains(item.vendor); });
    return OrphanGroup::grouped(items);
}

std::vector<DevCacheItem> selectedDeveloperItems(const AppLibrary& library,
                                                 const std::unordered_set<FileURL>& urls) {
    return selectedAmong(*library.developerCaches, &DevCacheItem::url, urls);
}

std::vector<UserFile> selectedFiles(const AppLibrary& library, const std::unordered_set<FileURL>& urls) {
    return selectedAmong(*library.files, &UserFile::url, urls);
}

std::vector<DuplicateGroup> selectedDuplicateGroups(const AppLibrary& library,
                                                    const std::unordered_set<std::string>& ids) {
    return selectedAmong(*library.duplicates, &DuplicateGroup::id, ids);
}

std::vector<StartupItem> selectedStartupItems(const AppLibrary& library,
                                              const std::unordered_set<FileURL>& urls) {
    return selectedAmong(*library.startupItems, &StartupItem::url, urls);
}

} // namespace quillane
