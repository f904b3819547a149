#pragma once
#include "OrphanItem.h"
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quillane {

class Calendar;

// What the removed applications of one vendor left behind, where it lies in a list.
struct OrphanGroupView {
    std::span<const OrphanItem* const> items; // largest first, at least one

    const std::string& vendor() const { return items.front()->vendor; }
    Bytes totalBytes() const;
    std::optional<Date> lastModified() const;
    std::string title() const;
    bool requiresAdmin() const;
};

// A list by vendor, without a copy of any item: the list must outlive this and stay as it is.
class OrphanGrouping {
  public:
    explicit OrphanGrouping(const std::vector<OrphanItem>& items);
    // The group with the largest total first; of equal totals the vendor that sorts first.
    const std::vector<OrphanGroupView>& groups() const { return m_groups; }
    // How many groups there are.
    static std::size_t count(const std::vector<OrphanItem>& items);

    OrphanGrouping(const OrphanGrouping&) = delete;
    OrphanGrouping& operator=(const OrphanGrouping&) = delete;

  private:
    std::vector<const OrphanItem*> m_items; // group after group, in no order of the groups
    std::vector<OrphanGroupView> m_groups;
};

// The same with items of its own. Its identity is `vendor`.
struct OrphanGroup {
    std::string vendor;
    std::vector<OrphanItem> items; // largest first

    static OrphanGroup of(const OrphanGroupView& group);
    // The items by vendor, in the order of OrphanGrouping.
    static std::vector<OrphanGroup> grouped(const std::vector<OrphanItem>& items);

    const std::string& id() const { return vendor; }
    Bytes totalBytes() const;
    // The latest date among the items; absent when none has one.
    std::optional<Date> lastModified() const;
    // `lastModified`, or the earliest date, so that what has no date sorts as the oldest.
    Date lastModifiedSortKey() const { return lastModified().value_or(Date::distantPast()); }
    // Whole calendar days from the last change to `now`; absent when there is no date.
    std::optional<int> daysSinceModified(Date now, const Calendar& calendar) const;
    // The name that the group goes by: the identifier that most others of the group extend ("com.example.tool"
    // over "com.example.tool.helper"), the earliest of several; the vendor when there are no items.
    std::string title() const;
    // Whether anything in it lies outside the user's home folder.
    bool requiresAdmin() const;

    friend bool operator==(const OrphanGroup&, const OrphanGroup&) = default;
};

} // namespace quillane

template <>
struct std::hash<quillane::OrphanGroup> {
    std::size_t operator()(const quillane::OrphanGroup& group) const noexcept {
        return quillane::hashOf(group.vendor, quillane::hashOfRange(group.items));
    }
};
