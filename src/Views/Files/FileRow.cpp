#include "Files/FileRow.h"
#include <functional>
#include <string_view>
#include <tuple>
#include <utility>

namespace quillane {

namespace {

Ranks ranksOf(const std::vector<FileRecord>& records, FileSortKey key, NameRanks& names) {
    const auto by = [&records](auto keyOf) {
        return ranksBy(records, [&](const FileRecord& record) { return std::invoke(keyOf, *record.file); });
    };
    switch (key) {
    case FileSortKey::name:
        return names.of(records, [](const FileRecord& record) -> std::string_view {
            return record.file->url.lastPathComponent();
        });
    case FileSortKey::kind:
        return by([](const UserFile& file) { return rawValue(file.kind); });
    case FileSortKey::bytes:
        return by(&UserFile::bytes);
    case FileSortKey::lastUsed:
        return by(&UserFile::lastUsedSortKey);
    case FileSortKey::folder:
        return names.of(records, [](const FileRecord& record) -> std::string_view { return record.folder; });
    }
    __builtin_unreachable();
}

} // namespace

FileRow FileRecord::row() const {
    return {file->url,
            file->kind,
            file->bytes,
            file->lastUsed,
            folder,
            file->isCloudPlaceholder,
            file->installsAnInstalledApp,
            isProtected};
}

// The folder is part of the location.
bool FileRecord::isShownBy(const FileRow& shown) const {
    return std::tie(shown.url, shown.bytes, shown.lastUsed, shown.isCloudPlaceholder,
                    shown.installsAnInstalledApp, shown.isProtected) ==
               std::tie(file->url, file->bytes, file->lastUsed, file->isCloudPlaceholder,
                        file->installsAnInstalledApp, isProtected) &&
           shown.kind == file->kind;
}

std::vector<FileRecord> sorted(std::vector<FileRecord> records, const std::vector<FileComparator>& order,
                               NameRanks& names) {
    return sortedBySteps(std::move(records), order, [&names](const auto& sortees, FileSortKey key) {
        return ranksOf(sortees, key, names);
    });
}

} // namespace quillane
