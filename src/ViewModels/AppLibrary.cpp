#include "AppLibrary.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "StoredRecords.h"

namespace quillane {

AppLibrary::AppLibrary(const Platform& platform)
    : m_platform(platform)
    , m_tasks(platform.tasks) {
    const auto& defaults = platform.defaults;
    if (const auto paths = defaults.stringArray(DefaultsKeys::kProtectedPaths)) {
        protectedPaths = std::set<std::string>(paths->begin(), paths->end());
    }
    // Data that can't be read counts as none and stays until it is overwritten.
    if (const auto data = defaults.data(DefaultsKeys::kLastOperation)) {
        lastOperation = StoredRecords::decodeUndoableOperation(*data);
    }
    if (const auto data = defaults.data(DefaultsKeys::kRecentUninstalls)) {
        recentUninstalls =
            StoredRecords::decodeRecentUninstalls(*data).value_or(std::vector<RecentUninstall>());
    }
}

} // namespace quillane
