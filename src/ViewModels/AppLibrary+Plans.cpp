// What could be removed, as rows for the review. Only builds values: nothing here touches a file.
#include "AppLibrary.h"
#include "FileSystem.h"
#include "Formatting.h"
#include <algorithm>
#include <string>
#include <utility>

namespace quillane {
namespace {

constexpr std::string_view kSeparator = " - ";

// The token of the Trash's row: never opened, the sweep goes by the category.
const FileURL& trashToken() {
    static const FileURL token("/.Trash");
    return token;
}

std::string nameOf(const FileURL& url) {
    return std::string(url.lastPathComponent());
}

// Wherever the path of the home folder occurs, not only at the beginning.
std::string withHomeAsTilde(std::string path, const FileURL& home) {
    const auto& folder = home.path();
    for (auto at = path.find(folder); at != std::string::npos; at = path.find(folder, at + 1)) {
        path.replace(at, folder.size(), "~");
    }
    return path;
}

// "Caches - com.example.tool": for what lies in a Library location.
template <class Item>
SweepEntry entryFor(const Item& item, SweepCategory category, std::string title) {
    return {item.url, category, std::move(title), item.category + std::string(kSeparator) + nameOf(item.url),
            item.bytes};
}

SweepEntry entryFor(const DevCacheItem& item, const FileURL& home) {
    return {item.url, SweepCategory::developer, item.tool + std::string(kSeparator) + item.kind,
            withHomeAsTilde(item.url.path(), home), item.bytes};
}

template <class Record>
std::string numberOf(const std::vector<Record>& records) {
    return Formatting::number(static_cast<std::int64_t>(records.size()));
}

// "Uninstall Name" for one, "Uninstall 3 apps" else: the number is what was asked for, before any filter.
std::string labelForApps(const std::vector<InstalledApp>& apps) {
    if (apps.size() == 1) {
        return "Uninstall " + apps.front().name;
    }
    return "Uninstall " + numberOf(apps) + " apps";
}

std::string labelForOrphanGroups(const std::vector<OrphanGroup>& groups) {
    if (groups.size() == 1) {
        return "Remove " + groups.front().title() + " leftovers";
    }
    return "Remove leftovers of " + numberOf(groups) + " apps";
}

std::string labelForDeveloperItems(const std::vector<DevCacheItem>& items) {
    if (items.size() == 1) {
        return "Remove " + items.front().kind;
    }
    return "Remove " + numberOf(items) + " developer locations";
}

} // namespace

bool AppLibrary::isProtected(const FileURL& url) const {
    return protectedPaths->contains(url.path());
}

std::vector<LeftoverItem> AppLibrary::reclaimableCache(const InstalledApp& app) const {
    if (isProtected(app.url)) {
        return {}; // a protected application gives up nothing
    }
    auto items = app.cacheItems();
    std::erase_if(items, [&](const LeftoverItem& item) {
        return isProtected(item.url) || inaccessible->contains(item.url);
    });
    return items;
}

Bytes AppLibrary::reclaimableCacheBytes(const InstalledApp& app) const {
    return sumOfBytes(reclaimableCache(app), [](const LeftoverItem& item) { return item.bytes; });
}

std::vector<DevCacheItem> AppLibrary::sweepableDeveloperCaches() const {
    std::vector<DevCacheItem> items;
    std::ranges::copy_if(*developerCaches, std::back_inserter(items), [&](const DevCacheItem& item) {
        return item.safeToSweep && !isProtected(item.url) && !inaccessible->contains(item.url);
    });
    return items;
}

std::vector<OrphanItem> AppLibrary::sweepableItems(const OrphanGroup& group) const {
    std::vector<OrphanItem> items;
    std::ranges::copy_if(group.items, std::back_inserter(items), [&](const OrphanItem& item) {
        return !item.requiresAdmin && !isProtected(item.url) && !inaccessible->contains(item.url);
    });
    return items;
}

std::vector<SweepEntry> AppLibrary::developerPlan() const {
    const auto home = m_platform.files.home();
    std::vector<SweepEntry> entries;
    for (const auto& item : sweepableDeveloperCaches()) {
        entries.push_back(entryFor(item, home));
    }
    return entries;
}

std::vector<SweepEntry> AppLibrary::orphanEntries(const std::vector<OrphanGroup>& groups) const {
    std::vector<SweepEntry> entries;
    for (const auto& group : groups) {
        const auto title = group.title();
        for (const auto& item : sweepableItems(group)) {
            entries.push_back(entryFor(item, SweepCategory::orphans, title));
        }
    }
    return entries;
}

std::vector<SweepEntry> AppLibrary::cachePlan() const {
    std::vector<SweepEntry> entries;
    for (const auto& app : *apps) {
        for (const auto& item : reclaimableCache(app)) {
            entries.push_back(entryFor(item, SweepCategory::caches, app.name));
        }
    }
    return entries;
}

std::vector<SweepEntry> AppLibrary::trashPlan() const {
    const auto& trash = *trashState;
    if (trash.needsFullDiskAccess || trash.count == 0) {
        return {};
    }
    return {{trashToken(), SweepCategory::trash, "Everything in the Trash",
             Formatting::number(trash.count) + " item(s), deleted permanently", trash.bytes}};
}

// A finder joins with its own case.
std::vector<SweepEntry> AppLibrary::plan(SweepCategory category) const {
    switch (category) {
    case SweepCategory::caches:
        return cachePlan();
    case SweepCategory::developer:
        return developerPlan();
    case SweepCategory::orphans:
        return orphanEntries(OrphanGroup::grouped(*orphans));
    case SweepCategory::trash:
        return trashPlan();
    case SweepCategory::apps:
    case SweepCategory::files:
    case SweepCategory::startup:
        return {}; // reached only through a removal that the user asks for
    }
    __builtin_unreachable();
}

std::vector<SweepEntry> AppLibrary::fullPlan() const {
    std::vector<SweepEntry> entries;
    for (const auto category : kAllSweepCategories) {
        if (sweepSelection->contains(category)) {
            std::ranges::move(plan(category), std::back_inserter(entries));
        }
    }
    return entries;
}

Bytes AppLibrary::bytes(SweepCategory category) const {
    return sumOfBytes(plan(category), [](const SweepEntry& entry) { return entry.bytes; });
}

Bytes AppLibrary::selectedSweepBytes() const {
    return sumOfBytes(*sweepSelection, [&](SweepCategory category) { return bytes(category); });
}

int AppLibrary::itemCount(SweepCategory category) const {
    switch (category) {
    case SweepCategory::caches:
        return static_cast<int>(std::ranges::count_if(
            *apps, [&](const InstalledApp& app) { return !reclaimableCache(app).empty(); }));
    case SweepCategory::developer:
        return static_cast<int>(sweepableDeveloperCaches().size());
    case SweepCategory::orphans:
        return static_cast<int>(
            std::ranges::count_if(OrphanGroup::grouped(*orphans),
                                  [&](const OrphanGroup& group) { return !sweepableItems(group).empty(); }));
    case SweepCategory::trash:
        return trashState->count;
    case SweepCategory::apps:
    case SweepCategory::files:
    case SweepCategory::startup:
        return 0;
    }
    __builtin_unreachable();
}

BulkRemoval AppLibrary::removalForApps(const std::vector<InstalledApp>& selected) const {
    std::vector<SweepEntry> entries;
    std::unordered_set<FileURL> excluded;
    for (const auto& app : selected) {
        if (app.source == AppSource::system || isProtected(app.url)) {
            continue;
        }
        entries.push_back({app.url, SweepCategory::apps, app.name, "Application bundle", app.bundleBytes});
        for (const auto& item : app.leftovers) {
            if (isProtected(item.url) || item.requiresAdmin) {
                continue;
            }
            entries.push_back(entryFor(item, SweepCategory::apps, app.name));
            if (item.confidence == LeftoverItem::Confidence::medium) {
                excluded.insert(item.url); // listed, and goes only if the user ticks it
            }
        }
    }
    return BulkRemoval::make(labelForApps(selected), std::move(entries), std::move(excluded));
}

BulkRemoval AppLibrary::removalForCache(const InstalledApp& app) const {
    std::vector<SweepEntry> entries;
    for (const auto& item : reclaimableCache(app)) {
        entries.push_back(entryFor(item, SweepCategory::caches, app.name));
    }
    return BulkRemoval::make("Clean " + app.name + " cache", std::move(entries));
}

BulkRemoval AppLibrary::removalForOrphanGroups(const std::vector<OrphanGroup>& groups) const {
    return BulkRemoval::make(labelForOrphanGroups(groups), orphanEntries(groups));
}

BulkRemoval AppLibrary::removalForDeveloperItems(const std::vector<DevCacheItem>& items) const {
    const auto home = m_platform.files.home();
    std::vector<SweepEntry> entries;
    for (const auto& item : items) {
        if (!isProtected(item.url)) {
            entries.push_back(entryFor(item, home));
        }
    }
    return BulkRemoval::make(labelForDeveloperItems(items), std::move(entries));
}

} // namespace quillane
