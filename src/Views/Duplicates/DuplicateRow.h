#pragma once
#include "DuplicateGroup.h"
#include "State/SortStep.h"
#include "Tables/SortOrder.h"
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

// What the table of copies shows of a group, and nothing that it does not show.
struct DuplicateRow {
    std::string id;
    std::string name;
    UserFile::Kind kind = UserFile::Kind::other; // of the first file
    std::size_t count = 0;
    Bytes bytesEach = 0;
    Bytes wastedBytes = 0;
    friend bool operator==(const DuplicateRow&, const DuplicateRow&) = default;
};

// What a row is made of. The group is the library's and stays where it is.
struct DuplicateRecord {
    const DuplicateGroup* group;

    const std::string& key() const { return group->id; }
    std::string_view name() const;
    UserFile::Kind kind() const;
    bool isShownBy(const DuplicateRow& shown) const;
    DuplicateRow row() const;
};

// Sorted by the first comparator, ties by the next one and at last by the order given. Names sort as the Finder
// sorts them. `names` remembers those of the last call, of the same table.
std::vector<DuplicateRecord> sorted(std::vector<DuplicateRecord> records,
                                    const std::vector<DuplicateComparator>& order, NameRanks& names);

} // namespace quillane
