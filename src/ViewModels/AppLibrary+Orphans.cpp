// What removed applications left behind: looking for it, showing it, and what of it can go.
#include "AppLibrary.h"
#include "Detached.h"
#include "Formatting.h"
#include "OrphanFinder.h"
#include "ScanPace.h"
#include "TextComparison.h"
#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>

namespace quillane {
namespace {

// A group stands or falls as a whole.
bool matches(const OrphanGroupView& group, const Text::Search& search) {
    return search.isEmpty() || search.isIn(group.vendor()) ||
           std::ranges::any_of(group.items,
                               [&](const OrphanItem* item) { return search.isIn(item->identifier); });
}

std::string labelForOrphanGroups(const std::vector<OrphanGroup>& groups) {
    if (groups.size() == 1) {
        return "Remove " + groups.front().title() + " leftovers";
    }
    return "Remove leftovers of " + Formatting::number(static_cast<std::int64_t>(groups.size())) + " apps";
}

} // namespace

Task<> AppLibrary::findOrphans(int generation, ScanReason reason, StopToken stop) {
    phase = Phase{Phase::Kind::findingOrphans};
    std::set<std::string> installed;
    for (const auto& app : *apps) {
        if (app.bundleIdentifier) {
            installed.insert(*app.bundleIdentifier);
        }
    }
    auto found =
        co_await detached(m_platform.tasks, ScanPace::of(reason).searching,
                          [platform = m_platform, installed = std::move(installed), stop = std::move(stop)] {
                              return OrphanFinder::orphans(platform, installed, stop);
                          });
    if (!isStale(generation)) {
        foundAnew();
        orphans = std::move(found);
    }
}

std::vector<OrphanGroup> AppLibrary::visibleOrphanGroups() const {
    std::vector<OrphanGroup> groups;
    forEachVisibleOrphanGroup(
        [&groups](const OrphanGroupView& group) { groups.push_back(OrphanGroup::of(group)); });
    return groups;
}

void AppLibrary::forEachVisibleOrphanGroup(FunctionRef<void(const OrphanGroupView&)> visit) const {
    const Text::Search search(*searchText);
    const OrphanGrouping grouping(*orphans);
    for (const auto& group : grouping.groups()) {
        if (matches(group, search)) {
            visit(group);
        }
    }
}

Bytes AppLibrary::totalOrphanBytes() const {
    return sumOfBytes(*orphans, [](const OrphanItem& item) { return item.bytes; });
}

bool AppLibrary::isSweepable(const OrphanItem& item) const {
    return !item.requiresAdmin && !isProtected(item.url) && !inaccessible->contains(item.url);
}

std::vector<OrphanItem> AppLibrary::sweepableItems(const OrphanGroup& group) const {
    std::vector<OrphanItem> items;
    std::ranges::copy_if(group.items, std::back_inserter(items),
                         [&](const OrphanItem& item) { return isSweepable(item); });
    return items;
}

int AppLibrary::orphanGroupCount() const {
    return static_cast<int>(OrphanGrouping::count(*orphans));
}

void AppLibrary::add(const OrphanGroupView& group, SweepPlan& plan) const {
    const auto title = group.title();
    bool gives = false;
    for (const auto* const item : group.items) {
        if (isSweepable(*item)) {
            plan.add(item->url, item->bytes,
                     [&] { return SweepRows::rowFor(*item, SweepCategory::orphans, title); });
            gives = true;
        }
    }
    if (gives) {
        plan.countOne();
    }
}

SweepPlan AppLibrary::orphanPlan(SweepPlan::Keeps keeps) const {
    SweepPlan plan(keeps);
    const OrphanGrouping grouping(*orphans);
    for (const auto& group : grouping.groups()) {
        add(group, plan);
    }
    return plan;
}

BulkRemoval AppLibrary::removalForOrphanGroups(const std::vector<OrphanGroup>& groups) const {
    SweepPlan plan;
    for (const auto& group : groups) {
        const auto title = group.title();
        for (const auto& item : sweepableItems(group)) {
            plan.add(SweepRows::rowFor(item, SweepCategory::orphans, title));
        }
    }
    return BulkRemoval::make(labelForOrphanGroups(groups), plan.takeRows());
}

} // namespace quillane
