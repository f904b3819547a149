#include "Orphans/OrphanRow.h"
#include <string_view>
#include <utility>

namespace quillane {

namespace {

Ranks ranksOf(const std::vector<OrphanRow>& rows, OrphanSortKey key, NameRanks& names) {
    switch (key) {
    case OrphanSortKey::title:
        return names.of(rows, [](const OrphanRow& row) -> std::string_view { return row.title; });
    case OrphanSortKey::totalBytes:
        return ranksBy(rows, &OrphanRow::totalBytes);
    case OrphanSortKey::itemCount:
        return ranksBy(rows, &OrphanRow::itemCount);
    case OrphanSortKey::lastModified:
        return ranksBy(rows, &OrphanRow::lastModifiedSortKey);
    }
    __builtin_unreachable();
}

} // namespace

OrphanRow OrphanRow::of(const OrphanGroupView& group) {
    return {group.vendor(),     group.title(),        group.totalBytes(),
            group.items.size(), group.lastModified(), group.requiresAdmin()};
}

std::vector<OrphanRow> sorted(std::vector<OrphanRow> rows, const std::vector<OrphanComparator>& order,
                              NameRanks& names) {
    return sortedBySteps(std::move(rows), order, [&names](const auto& sortees, OrphanSortKey key) {
        return ranksOf(sortees, key, names);
    });
}

} // namespace quillane
