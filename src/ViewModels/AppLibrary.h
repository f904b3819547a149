#pragma once
#include "AppFilter.h"
#include "InstalledApp.h"
#include "Platform.h"
#include "Published.h"
#include "StopToken.h"
#include "Task.h"
#include "TaskScope.h"
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// The one observable model object: every list that the screens show and the progress of the scan.
// Lives as long as the process. Main thread only; long work runs in jobs that get copies.
class AppLibrary {
  public:
    // The state of the scan. `done` and `total` count applications and are 0 but while measuring.
    struct Phase {
        enum class Kind { idle, scanning, measuring, findingOrphans, findingDeveloperCaches, ready };
        Kind kind = Kind::idle;
        int done = 0;
        int total = 0;
        friend bool operator==(const Phase&, const Phase&) = default;
    };

    // Who asked for a scan. Sets the priority of the whole scan.
    enum class ScanReason { user, automatic };

    // The platform's ports must outlive the library.
    explicit AppLibrary(const Platform& platform);
    AppLibrary(const AppLibrary&) = delete;
    AppLibrary& operator=(const AppLibrary&) = delete;

    Published<std::vector<InstalledApp>> apps; // all applications, sorted by name
    Published<Phase> phase;
    Published<std::string> searchText; // the one search of all sections; UTF-8
    Published<AppFilter> filter{AppFilter::thirdParty};

    // Starts a scan, or parks the request while one runs: a user's request outranks an automatic one.
    // Returns at once.
    void refresh(ScanReason reason);

    // The applications that pass the filter and the search, in the order of `apps`.
    std::vector<InstalledApp> visibleApps() const;
    // The sum over visibleApps().
    Bytes totalVisibleBytes() const;
    // The first application at this location; nothing for no id or an unknown one.
    std::optional<InstalledApp> appWithID(const std::optional<FileURL>& id) const;

    const Platform& platform() const { return m_platform; }

  private:
    Task<> scan(ScanReason reason, int generation, StopToken stop);
    Task<> measureAll(int generation, ScanReason reason, StopToken stop);
    bool passesFilter(const InstalledApp& app) const;
    bool passesSearch(const InstalledApp& app) const;
    bool isScanning() const;

    const Platform m_platform; // references: copying it is cheap
    std::optional<TaskHandle> m_scanTask;
    int m_scanGeneration = 0;
    std::optional<ScanReason> m_pendingRefresh;
    ScanReason m_currentReason = ScanReason::user;
    TaskScope m_tasks; // last: its suspended frames go before what they use
};

} // namespace quillane
