#include "OrphanGroup.h"
#include "Calendar.h"
#include "IndexTable.h"
#include <algorithm>
#include <functional>
#include <numeric>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace quillane {
namespace {

// How many identifiers equal each text or extend it by a dot and more: counts every identifier at itself and
// at each of its beginnings.
std::unordered_map<std::string_view, int> countDescendants(std::span<const OrphanItem* const> items) {
    std::unordered_map<std::string_view, int> counts;
    for (const auto* const item : items) {
        const std::string_view identifier = item->identifier;
        ++counts[identifier];
        for (auto dot = identifier.find('.'); dot != std::string_view::npos;
             dot = identifier.find('.', dot + 1)) {
            ++counts[identifier.substr(0, dot)];
        }
    }
    return counts;
}

// The vendors of a list, each with a number in the order in which they come.
class Vendors {
  public:
    explicit Vendors(const std::vector<OrphanItem>& items)
        : m_numbers(items.size()) {}

    std::size_t numberOf(const OrphanItem& item) {
        const auto isVendor = [&](std::size_t number) { return m_firsts[number]->vendor == item.vendor; };
        const auto number =
            m_numbers.findOrAdd(std::hash<std::string>()(item.vendor), m_firsts.size(), isVendor);
        if (number == m_firsts.size()) {
            m_firsts.push_back(&item);
        }
        return number;
    }
    std::size_t count() const { return m_firsts.size(); }

  private:
    IndexTable m_numbers;
    std::vector<const OrphanItem*> m_firsts; // of each vendor
};

bool isLarger(const OrphanItem* a, const OrphanItem* b) {
    return a->bytes > b->bytes;
}

std::vector<const OrphanItem*> pointersTo(const std::vector<OrphanItem>& items) {
    std::vector<const OrphanItem*> pointers;
    pointers.reserve(items.size());
    for (const auto& item : items) {
        pointers.push_back(&item);
    }
    return pointers;
}

} // namespace

std::size_t OrphanGrouping::count(const std::vector<OrphanItem>& items) {
    Vendors vendors(items);
    for (const auto& item : items) {
        vendors.numberOf(item);
    }
    return vendors.count();
}

OrphanGrouping::OrphanGrouping(const std::vector<OrphanItem>& items)
    : m_items(items.size()) {
    Vendors vendors(items);
    std::vector<std::size_t> numbers; // of the items' vendors
    numbers.reserve(items.size());
    std::vector<std::size_t> ends; // first how many items the vendors have, then where those end
    for (const auto& item : items) {
        numbers.push_back(vendors.numberOf(item));
        ends.resize(vendors.count());
        ++ends[numbers.back()];
    }
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    auto places = ends;
    for (std::size_t i = items.size();
         i-- > 0;) { // from the end of each group, which keeps the order within it
        m_items[--places[numbers[i]]] = &items[i];
    }

    std::vector<std::pair<Bytes, OrphanGroupView>> sized;
    sized.reserve(vendors.count());
    for (std::size_t vendor = 0; vendor < vendors.count(); ++vendor) {
        const std::span members(m_items.data() + places[vendor], ends[vendor] - places[vendor]);
        std::ranges::stable_sort(members, isLarger);
        const OrphanGroupView group{members};
        sized.emplace_back(group.totalBytes(), group);
    }
    std::ranges::sort(sized, [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first > b.first : a.second.vendor() < b.second.vendor();
    });
    m_groups.reserve(sized.size());
    for (const auto& entry : sized) {
        m_groups.push_back(entry.second);
    }
}

Bytes OrphanGroupView::totalBytes() const {
    return sumOfBytes(items, [](const OrphanItem* item) { return item->bytes; });
}

std::optional<Date> OrphanGroupView::lastModified() const {
    std::optional<Date> latest;
    for (const auto* const item : items) {
        latest = std::max(latest, item->lastModified); // an absent date is less than any other
    }
    return latest;
}

std::string OrphanGroupView::title() const {
    if (items.size() == 1) {
        return items.front()->identifier;
    }
    const auto counts = countDescendants(items);
    const auto* const most = *std::ranges::max_element(
        items, {}, [&](const OrphanItem* item) { return counts.at(std::string_view(item->identifier)); });
    return most->identifier;
}

bool OrphanGroupView::requiresAdmin() const {
    return std::ranges::any_of(items, &OrphanItem::requiresAdmin);
}

OrphanGroup OrphanGroup::of(const OrphanGroupView& group) {
    OrphanGroup copy{group.vendor(), {}};
    copy.items.reserve(group.items.size());
    for (const auto* const item : group.items) {
        copy.items.push_back(*item);
    }
    return copy;
}

std::vector<OrphanGroup> OrphanGroup::grouped(const std::vector<OrphanItem>& items) {
    const OrphanGrouping grouping(items);
    std::vector<OrphanGroup> groups;
    groups.reserve(grouping.groups().size());
    for (const auto& group : grouping.groups()) {
        groups.push_back(of(group));
    }
    return groups;
}

Bytes OrphanGroup::totalBytes() const {
    return sumOfBytes(items, [](const OrphanItem& item) { return item.bytes; });
}

std::optional<Date> OrphanGroup::lastModified() const {
    return OrphanGroupView{pointersTo(items)}.lastModified();
}

std::optional<int> OrphanGroup::daysSinceModified(Date now, const Calendar& calendar) const {
    const auto last = lastModified();
    return last ? std::optional(calendar.daysBetween(*last, now)) : std::nullopt;
}

std::string OrphanGroup::title() const {
    return items.empty() ? vendor : OrphanGroupView{pointersTo(items)}.title();
}

bool OrphanGroup::requiresAdmin() const {
    return std::ranges::any_of(items, &OrphanItem::requiresAdmin);
}

} // namespace quillane
