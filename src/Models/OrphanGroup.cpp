#include "OrphanGroup.h"
#include "Calendar.h"
#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace quillane {
namespace {

// How many identifiers equal each text or extend it by a dot and more: counts every identifier at itself and
// at each of its beginnings.
std::unordered_map<std::string_view, int> countDescendants(const std::vector<OrphanItem>& items) {
    std::unordered_map<std::string_view, int> counts;
    for (const auto& item : items) {
        const std::string_view identifier = item.identifier;
        ++counts[identifier];
        for (auto dot = identifier.find('.'); dot != std::string_view::npos;
             dot = identifier.find('.', dot + 1)) {
            ++counts[identifier.substr(0, dot)];
        }
    }
    return counts;
}

} // namespace

std::vector<OrphanGroup> OrphanGroup::grouped(const std::vector<OrphanItem>& items) {
    std::map<std::string, std::vector<OrphanItem>> byVendor;
    for (const auto& item : items) {
        byVendor[item.vendor].push_back(item);
    }
    std::vector<std::pair<Bytes, OrphanGroup>> sized;
    sized.reserve(byVendor.size());
    for (auto& [vendor, members] : byVendor) {
        std::ranges::stable_sort(members, std::ranges::greater(), &OrphanItem::bytes);
        OrphanGroup group{vendor, std::move(members)};
        const Bytes total = group.totalBytes();
        sized.emplace_back(total, std::move(group));
    }
    std::ranges::stable_sort(sized, std::ranges::greater(), &std::pair<Bytes, OrphanGroup>::first);
    std::vector<OrphanGroup> groups;
    groups.reserve(sized.size());
    for (auto& entry : sized) {
        groups.push_back(std::move(entry.second));
    }
    return groups;
}

Bytes OrphanGroup::totalBytes() const {
    return sumOfBytes(items, [](const OrphanItem& item) { return item.bytes; });
}

std::optional<Date> OrphanGroup::lastModified() const {
    std::optional<Date> latest;
    for (const auto& item : items) {
        latest = std::max(latest, item.lastModified); // an absent date is less than any other
    }
    return latest;
}

std::optional<int> OrphanGroup::daysSinceModified(Date now, const Calendar& calendar) const {
    const auto last = lastModified();
    return last ? std::optional(calendar.daysBetween(*last, now)) : std::nullopt;
}

std::string OrphanGroup::title() const {
    if (items.empty()) {
        return vendor;
    }
    const auto counts = countDescendants(items);
    const auto most = std::ranges::max_element(
        items, {}, [&](const OrphanItem& item) { return counts.at(std::string_view(item.identifier)); });
    return most->identifier;
}

bool OrphanGroup::requiresAdmin() const {
    return std::ranges::any_of(items, &OrphanItem::requiresAdmin);
}

} // namespace quillane
