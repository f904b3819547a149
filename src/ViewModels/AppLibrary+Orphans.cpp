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
bool matches(const OrphanGroup& group, const std::string& search) {
    return search.empty() || Text::localizedCaseInsensitiveContains(group.vendor, search) ||
           std::ranges::any_of(group.items, [&](const OrphanItem& item) {
               return Text::localizedCaseInsensitiveContains(item.identifier, search);
           });
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
    auto groups = OrphanGroup::grouped(*orphans);
    std::erase_if(groups,
                  [&search = *searchText](const OrphanGroup& group) { return !matches(group, search); });
    return groups;
}

Bytes AppLibrary::totalOrphanBytes() const {
    return sumOfBytes(*orphans, [](const OrphanItem& item) { return item.bytes; });
}

std::vector<OrphanItem> AppLibrary::sweepableItems(const OrphanGroup& group) const {
    std::vector<OrphanItem> items;
    std::ranges::copy_if(group.items, std::back_inserter(items), [&](const OrphanItem& item) {
        return !item.requiresAdmin && !isProtected(item.url) && !inaccessible->contains(item.url);
    });
    return items;
}

int AppLibrary::orphanGroupCount() const {
    return static_cast<int>(OrphanGroup::grouped(*orphans).size());
}

SweepPlan AppLibrary::planFor(const std::vector<OrphanGroup>& groups) const {
    SweepPlan plan;
    for (const auto& group : groups) {
        const auto title = group.title();
        const auto items = sweepableItems(group);
        for (const auto& item : items) {
            plan.add(SweepRows::rowFor(item, SweepCategory::orphans, title));
        }
        if (!items.empty()) {
            plan.countOne();
        }
    }
    return plan;
}

SweepPlan AppLibrary::orphanPlan() const {
    return planFor(OrphanGroup::grouped(*orphans));
}

BulkRemoval AppLibrary::removalForOrphanGroups(const std::vector<OrphanGroup>& groups) const {
    return BulkRemoval::make(labelForOrphanGroups(groups), planFor(groups).takeRows());
}

} // namespace quillane
