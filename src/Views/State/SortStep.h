#pragma once
#include <vector>

namespace quillane {

// One step of the order of a table: what it sorts by, and whether the greatest comes first. The keys of a
// table stand in the order of its columns.
template <class SortKey>
struct SortStep {
    using Key = SortKey;
    Key key{};
    bool isReverse = false;
    friend bool operator==(const SortStep&, const SortStep&) = default;
};

// What the tables of the sections sort by. They begin with the largest, or with the worst.
enum class AppSortKey { name, totalBytes, lastUsed, architecture, version };
using AppComparator = SortStep<AppSortKey>;
inline const std::vector<AppComparator> kInitialAppOrder = {{AppSortKey::totalBytes, true}};

enum class OrphanSortKey { title, totalBytes, itemCount, lastModified };
using OrphanComparator = SortStep<OrphanSortKey>;
inline const std::vector<OrphanComparator> kInitialOrphanOrder = {{OrphanSortKey::totalBytes, true}};

enum class DeveloperSortKey { tool, kind, bytes, sweep, lastModified };
using DeveloperComparator = SortStep<DeveloperSortKey>;
inline const std::vector<DeveloperComparator> kInitialDeveloperOrder = {{DeveloperSortKey::bytes, true}};

enum class FileSortKey { name, kind, bytes, lastUsed, folder };
using FileComparator = SortStep<FileSortKey>;
inline const std::vector<FileComparator> kInitialFileOrder = {{FileSortKey::bytes, true}};

enum class DuplicateSortKey { name, count, bytesEach, wastedBytes };
using DuplicateComparator = SortStep<DuplicateSortKey>;
inline const std::vector<DuplicateComparator> kInitialDuplicateOrder = {
    {DuplicateSortKey::wastedBytes, true}};

// By columns that sort; of those between them nothing is sorted.
enum class StartupSortKey { health = 0, label = 1, kind = 3 };
using StartupComparator = SortStep<StartupSortKey>;
inline const std::vector<StartupComparator> kInitialStartupOrder = {{StartupSortKey::health, false},
                                                                    {StartupSortKey::label, false}};

} // namespace quillane
