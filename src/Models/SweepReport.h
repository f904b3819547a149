#pragma once
#include "Bytes.h"
#include "SweepCategory.h"
#include "UninstallerReport.h"
#include <map>
#include <vector>

namespace quillane {

// The result of one sweep.
struct SweepReport {
    std::map<SweepCategory, Bytes> bytesByCategory; // a key only for a category that was worked
    int itemsMovedToTrash = 0;
    int itemsDeleted = 0;                       // top-level items deleted from the Trash
    std::vector<Uninstaller::Failure> failures; // in the order in which they occurred

    Bytes totalBytes() const {
        return sumOfBytes(bytesByCategory, [](const auto& entry) { return entry.second; });
    }
    friend bool operator==(const SweepReport&, const SweepReport&) = default;
};

} // namespace quillane
