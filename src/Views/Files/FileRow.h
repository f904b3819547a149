#pragma once
#include "State/SortStep.h"
#include "Tables/SortOrder.h"
#include "UserFile.h"
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// What the table of files shows of a file, and nothing that it does not show.
struct FileRow {
    FileURL url;
    UserFile::Kind kind = UserFile::Kind::other;
    Bytes bytes = 0;
    std::optional<Date> lastUsed;
    std::string folder; // as the screen says it
    bool isCloudPlaceholder = false;
    bool installsAnInstalledApp = false;
    bool isProtected = false;
    friend bool operator==(const FileRow&, const FileRow&) = default;
};

// What a row is made of. The file is the library's and stays where it is.
struct FileRecord {
    const UserFile* file;
    std::string folder; // of the file, as the screen says it
    bool isProtected = false;

    const FileURL& key() const { return file->url; }
    bool isShownBy(const FileRow& shown) const;
    FileRow row() const;
};

// Sorted by the first comparator, ties by the next one and at last by the order given. Names and folders sort as the
// Finder sorts names; what has no date is the oldest. `names` remembers the words of the last call, of the same table.
std::vector<FileRecord> sorted(std::vector<FileRecord> records, const std::vector<FileComparator>& order,
                               NameRanks& names);

} // namespace quillane
