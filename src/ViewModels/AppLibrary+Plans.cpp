// What could be removed, as rows for the review. Only builds values: nothing here touches a file.
#include "AppLibrary.h"
#include "Formatting.h"
#include "StayingClaims.h"
#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace quillane {
namespace {

// The token of the Trash's row: never opened, the sweep goes by the category.
const FileURL& trashToken() {
    static const FileURL token("/.Trash");
    return token;
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

SweepPlan AppLibrary::cachePlan(SweepPlan::Keeps keeps) const {
    SweepPlan plan(keeps);
    for (const auto& app : *apps) {
        const auto items = reclaimableCache(app);
        for (const auto& item : items) {
            plan.add(item.url, item.bytes,
                     [&] { return SweepRows::rowFor(item, SweepCategory::caches, app.name); });
        }
        if (!items.empty()) {
            plan.countOne();
        }
    }
    return plan;
}

SweepPlan AppLibrary::trashPlan() const {
    const auto& trash = *trashState;
    if (trash.needsFullDiskAccess || trash.count == 0) {
        return SweepPlan();
    }
    SweepPlan plan;
    plan.add({trashToken(), SweepCategory::trash, "Everything in the Trash",
              Formatting::number(trash.count) + " item(s), deleted permanently", trash.bytes});
    plan.setCount(trash.count);
    return plan;
}

SweepPlan AppLibrary::planned(SweepCategory category, SweepPlan::Keeps keeps) const {
    switch (category) {
    case SweepCategory::caches:
        return cachePlan(keeps);
    case SweepCategory::trash:
        return trashPlan();
    default:
        return planOfFinders(category, keeps);
    }
}

std::vector<SweepEntry> AppLibrary::plan(SweepCategory category) const {
    return planned(category, SweepPlan::Keeps::rows).takeRows();
}

int AppLibrary::itemCount(SweepCategory category) const {
    return planned(category, SweepPlan::Keeps::figures).count();
}

Bytes AppLibrary::bytes(SweepCategory category) const {
    return planned(category, SweepPlan::Keeps::figures).bytes();
}

SweepPlan AppLibrary::plannedOfAllTicked() const {
    SweepPlan all;
    for (const auto category : kAllSweepCategories) {
        if (!sweepSelection->contains(category)) {
            continue;
        }
        auto more = planned(category, SweepPlan::Keeps::rows);
        // The first, the caches, has most of the rows, and nothing stands yet to compare them with.
        if (all.rows().empty()) {
            all = std::move(more);
            continue;
        }
        for (auto& row : more.takeRows()) {
            all.add(std::move(row));
        }
    }
    return all;
}

std::vector<SweepEntry> AppLibrary::fullPlan() const {
    return plannedOfAllTicked().takeRows();
}

Bytes AppLibrary::selectedSweepBytes() const {
    return plannedOfAllTicked().bytes();
}

BulkRemoval AppLibrary::removalForApps(const std::vector<InstalledApp>& selected) const {
    auto going = selected;
    std::erase_if(going, [&](const InstalledApp& app) {
        return app.source == AppSource::system || isProtected(app.url);
    });
    const StayingClaims staying(*apps, going);
    SweepPlan plan;
    std::unordered_set<FileURL> excluded; // listed, and goes only if the user ticks it
    for (const auto& app : going) {
        plan.add({app.url, SweepCategory::apps, app.name, "Application bundle", app.bundleBytes});
        for (const auto& item : app.leftovers) {
            if (isProtected(item.url) || item.requiresAdmin) {
                continue;
            }
            plan.add(SweepRows::rowFor(item, SweepCategory::apps, app.name));
            if (item.confidence == LeftoverItem::Confidence::medium || staying.hold(item.url)) {
                excluded.insert(item.url);
            }
        }
    }
    return BulkRemoval::make(labelForApps(selected), plan.takeRows(), std::move(excluded));
}

BulkRemoval AppLibrary::removalForCache(const InstalledApp& app) const {
    SweepPlan plan;
    for (const auto& item : reclaimableCache(app)) {
        plan.add(SweepRows::rowFor(item, SweepCategory::caches, app.name));
    }
    return BulkRemoval::make("Clean " + app.name + " cache", plan.takeRows());
}

} // namespace quillane
