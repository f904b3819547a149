#pragma once
#include "AppFilter.h"
#include "FunctionRef.h"
#include "InstalledApp.h"
#include "Platform.h"
#include "Published.h"
#include "StopToken.h"
#include "Task.h"
#include "TaskScope.h"
#include <optional>
#include <string>
#include <unordered_map>
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
    friend struct AppLibraryTesting; // lets tests make a running scan stale

    // What measuring learned of one application.
    struct Measurement {
        FileURL url;
        Bytes bundleBytes = 0;
        std::vector<LeftoverItem> leftovers;
    };
    // An application's place in `apps`, by its location.
    using IndexByURL = std::unordered_map<FileURL, std::size_t>;

    bool isScanning() const;
    // True when a newer scan has begun: a step of the older one then ends silently and changes nothing.
    // Asked after every suspension.
    bool isStale(int generation) const { return generation != m_scanGeneration; }

    // The scan from its first job to the phase `ready`, stage by stage.
    Task<> scan(ScanReason reason, int generation, StopToken stop);
    void publishUnmeasured(std::vector<InstalledApp> found);
    void pruneIcons() const;
    void serveParkedRefresh();

    // Fills in sizes and leftovers of all applications, a batch at a time, and tells progress in `phase`.
    Task<> measureAll(int generation, ScanReason reason, StopToken stop);
    // Writes into the application at its place, unless something else stands there by now.
    void publish(Measurement measured, const IndexByURL& indexByURL);

    // The applications that visibleApps() gives, in order, without copying them.
    void forEachVisibleApp(FunctionRef<void(const InstalledApp&)> visit) const;

    const Platform m_platform;                  // references: copying it is cheap
    std::optional<TaskHandle> m_scanTask;       // of the latest scan, also after its end
    int m_scanGeneration = 0;                   // number of the latest scan; grows when one really starts
    std::optional<ScanReason> m_pendingRefresh; // a scan asked for while one runs
    ScanReason m_currentReason = ScanReason::user;
    TaskScope m_tasks; // last: its suspended frames go before what they use
};

} // namespace quillane
