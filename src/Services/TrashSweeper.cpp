#include "TrashSweeper.h"
#include "FootprintCalculator.h"
#include "Trash.h"

namespace quillane::TrashSweeper {

State measure(const Platform& platform) {
    const auto items = platform.trash.items();
    if (!items) {
        return State::refused();
    }
    const Bytes bytes =
        sumOfBytes(*items, [&](const FileURL& item) { return FootprintCalculator::size(platform, item); });
    return State::measured(bytes, static_cast<int>(items->size()));
}

Uninstaller::Report empty(const Platform& platform) {
    Uninstaller::Report report;
    const auto items = platform.trash.items();
    if (!items) {
        report.failures.push_back({platform.trash.location().value_or(FileURL("/")), "No access", true});
        return report;
    }
    for (const auto& item : *items) {
        const Bytes bytes = FootprintCalculator::size(platform, item); // it is gone afterwards
        if (const auto deleted = platform.trash.deleteItem(item); !deleted) {
            report.failures.push_back(Uninstaller::Failure::fromError(item, deleted.error()));
            continue;
        }
        report.trashed.push_back(item);
        report.reclaimedBytes = checkedSum(report.reclaimedBytes, bytes);
    }
    return report;
}

} // namespace quillane::TrashSweeper
