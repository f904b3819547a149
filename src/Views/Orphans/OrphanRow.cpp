#include "Orphans/OrphanRow.h"
#include "Tables/SortOrder.h"
#include <utility>

namespace quillane {

namespace {

Ranks ranksOf(const std::vector<OrphanRow>& rows, OrphanSortKey key) {
    switch (key) {
    case OrphanSortKey::title:
        return ranksByName(rows, &OrphanRow::title);
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

OrphanRow OrphanRow::of(const OrphanGroup& group) {
    return {group.vendor,         group.title(),        group.totalBytes(),
            group.items.size(),   group.lastModified(), group.lastModifiedSortKey(),
            group.requiresAdmin()};
}

std::vector<OrphanRow> sorted(std::vector<OrphanRow> rows, const std::vector<OrphanComparator>& order) {
    return sortedBySteps(std::move(rows), order, ranksOf);
}

} // namespace quillane
