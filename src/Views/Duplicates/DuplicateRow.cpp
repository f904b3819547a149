#include "Duplicates/DuplicateRow.h"
#include <functional>
#include <utility>

namespace quillane {

namespace {

Ranks ranksOf(const std::vector<DuplicateRecord>& records, DuplicateSortKey key, NameRanks& names) {
    const auto by = [&records](auto keyOf) {
        return ranksBy(records,
                       [&](const DuplicateRecord& record) { return std::invoke(keyOf, *record.group); });
    };
    switch (key) {
    case DuplicateSortKey::name:
        return names.of(records, &DuplicateRecord::name);
    case DuplicateSortKey::count:
        return by(&DuplicateGroup::count);
    case DuplicateSortKey::bytesEach:
        return by(&DuplicateGroup::bytesEach);
    case DuplicateSortKey::wastedBytes:
        return by(&DuplicateGroup::wastedBytes);
    }
    __builtin_unreachable();
}

} // namespace

std::string_view DuplicateRecord::name() const {
    return group->files.empty() ? std::string_view() : group->files.front().url.lastPathComponent();
}

UserFile::Kind DuplicateRecord::kind() const {
    return group->files.empty() ? UserFile::Kind::other : group->files.front().kind;
}

DuplicateRow DuplicateRecord::row() const {
    return {group->id, std::string(name()), kind(), group->count(), group->bytesEach, group->wastedBytes()};
}

bool DuplicateRecord::isShownBy(const DuplicateRow& shown) const {
    return shown.id == group->id && shown.name == name() && shown.kind == kind() &&
           shown.count == group->count() && shown.bytesEach == group->bytesEach &&
           shown.wastedBytes == group->wastedBytes();
}

std::vector<DuplicateRecord> sorted(std::vector<DuplicateRecord> records,
                                    const std::vector<DuplicateComparator>& order, NameRanks& names) {
    return sortedBySteps(std::move(records), order, [&names](const auto& sortees, DuplicateSortKey key) {
        return ranksOf(sortees, key, names);
    });
}

} // namespace quillane
