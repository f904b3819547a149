#pragma once
#include "AppLibrary.h"
#include "TaskRunner.h"
#include <cstddef>

namespace quillane {

// How hard a scan may press, by who asked for it: one that nobody waits for must not starve the user's work.
struct ScanPace {
    Priority searching = Priority::background; // the jobs that find things
    Priority measuring = Priority::background; // each bundle being measured
    std::size_t bundlesAtOnce = 2;

    static constexpr ScanPace of(AppLibrary::ScanReason reason) {
        if (reason == AppLibrary::ScanReason::user) {
            return {Priority::userInitiated, Priority::utility, 6};
        }
        return {};
    }
};

} // namespace quillane
