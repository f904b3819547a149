// What could be removed, as rows for the review. Only builds values: nothing here touches a file.
#include "AppLibrary.h"
#include "FileSystem.h"
#include <algorithm>
#include <string>
#include <utility>

namespace quillane {
namespace {

// The token of the Trash's row: never opened, the sweep goes by the category.
const FileURL& trashToken() {
    static const FileURL token("/.Trash");
    return token;
}

// "Uninstall Name" for one, "Uninstall 3 apps" else: the number is what was asked for, before any filter.
std::string labelForApps(const std::vector<InstalledApp>& apps) {
    if (apps.size() == 1) {
        return "Uninstall " + apps.front().name;
    }
    return "Uninstall " + std::to_string(apps.size()) + " apps";
}

} // namespace

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

SweepPlan AppLibrary::cachePlan() const {
    SweepPlan plan;
    for (const auto& app : *apps) {
        const auto items = reclaimableCache(app);
        for (const auto& item : items) {
            plan.rows.push_back(SweepRows::rowFor(item, SweepCategory::caches, app.name));
        }
        plan.count += items.empty() ? 0 : 1;
    }
    return plan;
}

SweepPlan AppLibrary::trashPlan() const {
    const auto& trash = *trashState;
    if (trash.needsFullDiskAccess || trash.count == 0) {
        return {};
    }
    return {{{trashToken(), SweepCategory::trash, "Everything in the Trash",
              std::to_string(trash.count) + " item(s), deleted permanently", trash.bytes}},
            trash.count};
}

SweepPlan AppLibrary::planned(SweepCategory category) const {
    switch (category) {
    case SweepCategory::caches:
        return cachePlan();
    case SweepCategory::trash:
        return trashPlan();
    default:
        return planOfFinders(category);
    }
}

std::vector<SweepEntry> AppLibrary::plan(SweepCategory category) const {
    return planned(category).rows;
}

int AppLibrary::itemCount(SweepCategory category) const {
    return planned(category).count;
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
            entries.push_back(SweepRows::rowFor(item, SweepCategory::apps, app.name));
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
        entries.push_back(SweepRows::rowFor(item, SweepCategory::caches, app.name));
    }
    return BulkRemoval::make("Clean " + app.name + " cache", std::move(entries));
}

} // namespace quillane
