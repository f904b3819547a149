#pragma once
#include "AppLibrary.h"
#include <optional>
#include <utility>

namespace quillane {

// What tests see and do behind the library's back.
struct AppLibraryTesting {
    static int generation(const AppLibrary& library) { return library.m_scanGeneration; }
    static std::optional<AppLibrary::ScanReason> parked(const AppLibrary& library) {
        return library.m_pendingRefresh;
    }
    static AppLibrary::ScanReason currentReason(const AppLibrary& library) { return library.m_currentReason; }
    static std::optional<TaskHandle> scanTask(const AppLibrary& library) { return library.m_scanTask; }

    // Makes the running scan stale, as a newer one would.
    static void supersede(AppLibrary& library) { ++library.m_scanGeneration; }

    // Runs the measuring stage alone, over the applications that stand in the library.
    static void measure(AppLibrary& library, AppLibrary::ScanReason reason) {
        library.m_tasks.start([&library, reason](StopToken stop) {
            return library.measureAll(library.m_scanGeneration, reason, std::move(stop));
        });
    }
};

} // namespace quillane
