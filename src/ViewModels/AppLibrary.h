#pragma once
#include "AppFilter.h"
#include "BulkRemoval.h"
#include "DevCacheItem.h"
#include "FunctionRef.h"
#include "InstalledApp.h"
#include "LeftoverIndex.h"
#include "OrphanGroup.h"
#include "Platform.h"
#include "Published.h"
#include "RecentUninstall.h"
#include "StopToken.h"
#include "SweepCategory.h"
#include "SweepReport.h"
#include "Task.h"
#include "TaskScope.h"
#include "TrashState.h"
#include "UndoableOperation.h"
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quillane {

// The one observable model object: every list that the screens show and the progress of the scan.
// Lives as long as the process. Main thread only; long work runs in jobs that get copies.
class AppLibrary {
  public:
    // The state of the scan, whose stages follow each other in the order of the kinds. `done` and `total` count applications and are 0 but while measuring.
    struct Phase {
        enum class Kind { idle, scanning, measuring, findingOrphans, findingDeveloperCaches, ready };
        Kind kind = Kind::idle;
        int done = 0;
        int total = 0;
        friend bool operator==(const Phase&, const Phase&) = default;
    };

    // Who asked for a scan. Sets the priority of the whole scan.
    enum class ScanReason { user, automatic };

    // Reads what survived the last launch from the defaults and scans nothing. The platform's ports must outlive
    // the library.
    explicit AppLibrary(const Platform& platform);
    AppLibrary(const AppLibrary&) = delete;
    AppLibrary& operator=(const AppLibrary&) = delete;

    Published<std::vector<InstalledApp>> apps;                // all applications, sorted by name
    Published<std::vector<OrphanItem>> orphans;               // as the last scan found them, largest first
    Published<std::vector<DevCacheItem>> developerCaches;     // as the last walk found them, largest first
    Published<bool> accessJustGranted{false};                 // for 8 seconds after access was found granted
    Published<std::optional<TaskHandle>> accessWatch;         // polls while the Trash can't be read
    Published<std::vector<RecentUninstall>> recentUninstalls; // as the last launch left them
    Published<TrashSweeper::State> trashState;
    Published<Phase> phase;
    Published<std::string> searchText; // the one search of all sections; UTF-8
    Published<AppFilter> filter{AppFilter::thirdParty};
    // The categories ticked on the Overview; not kept across launches.
    Published<std::set<SweepCategory>> sweepSelection{
        {SweepCategory::caches, SweepCategory::developer, SweepCategory::orphans}};
    Published<bool> isSweeping{false};
    Published<std::optional<std::string>> sweepStatus; // what is being done now; absent outside a sweep
    Published<int> sweepProcessed{0};                  // rows finished
    Published<int> sweepTotal{0};                      // rows received
    Published<Bytes> sweepReclaimedSoFar{0};
    // Paths that failed for lack of access since the last scan.
    Published<std::unordered_set<FileURL>> inaccessible;
    // What must never be touched, by the exact text of its path.
    Published<std::set<std::string>> protectedPaths;
    Published<std::optional<UndoableOperation>> lastOperation; // the one sweep that can be put back

    // Starts a scan, or parks the request while one runs: a user's request outranks an automatic one.
    // Returns at once.
    void refresh(ScanReason reason);

    // The applications that pass the filter and the search, in the order of `apps`.
    std::vector<InstalledApp> visibleApps() const;
    // The sum over visibleApps().
    Bytes totalVisibleBytes() const;
    // The first application at this location; nothing for no id or an unknown one.
    std::optional<InstalledApp> appWithID(const std::optional<FileURL>& id) const;

    // The groups of orphans that the search lets through, whole: by vendor or by the identifier of any item.
    std::vector<OrphanGroup> visibleOrphanGroups() const;
    // The sum over all orphans, whatever the search says.
    Bytes totalOrphanBytes() const;
    // The developer caches whose tool or kind the search lets through, in their order.
    std::vector<DevCacheItem> visibleDeveloperCaches() const;
    // The sum over all developer caches, whatever the search says.
    Bytes totalDeveloperBytes() const;

    // What a cache cleanup of this application would remove: nothing when the application is protected, else
    // its regenerable leftovers less those that are protected or out of reach.
    std::vector<LeftoverItem> reclaimableCache(const InstalledApp& app) const;
    Bytes reclaimableCacheBytes(const InstalledApp& app) const;

    // What of the group may be moved to the Trash: less what is protected, needs administrator rights or is out
    // of reach. In their order.
    std::vector<OrphanItem> sweepableItems(const OrphanGroup& group) const;
    // The developer caches that a cleanup includes: those safe to sweep, less what is protected or out of reach.
    std::vector<DevCacheItem> sweepableDeveloperCaches() const;

    // The rows that a sweep of the category would take: only what is safe without asking. Computed afresh.
    std::vector<SweepEntry> plan(SweepCategory category) const;
    // The plans of all ticked categories.
    std::vector<SweepEntry> fullPlan() const;
    // The figure beside a category: exactly what a sweep of it would take.
    Bytes bytes(SweepCategory category) const;
    // What the category's row counts: applications, locations, groups or items of the Trash.
    int itemCount(SweepCategory category) const;
    Bytes selectedSweepBytes() const;

    // Requests that answer a user's explicit choice. System applications and what is protected are left out.
    BulkRemoval removalForApps(const std::vector<InstalledApp>& selected) const;
    BulkRemoval removalForCache(const InstalledApp& app) const;
    // The sweepable items of each group.
    BulkRemoval removalForOrphanGroups(const std::vector<OrphanGroup>& groups) const;
    // Whatever is not protected, also what no cleanup would include: the user has asked for it.
    BulkRemoval removalForDeveloperItems(const std::vector<DevCacheItem>& items) const;

    // Runs a confirmed list to its end: the Trash first, then applications are asked to quit, then the rows
    // move one at a time, each checked against protection right before. Never stops at a failure and can't be
    // cancelled. The screens see to it that one sweep runs at a time.
    Task<SweepReport> runSweep(std::vector<SweepEntry> entries, std::string label);
    // Takes the last operation's items back, forgets the operation whatever the outcome, and starts a scan.
    // With no operation, an empty report and nothing else.
    Task<Uninstaller::Report> undoLastOperation();

    bool isProtected(const FileURL& url) const;
    // Takes effect at once and is stored at once.
    void setProtected(const FileURL& url, bool isProtected);
    // The same for each of them, stored once.
    void setProtected(const std::vector<FileURL>& urls, bool isProtected);
    // One look whether the Trash can be read by now; only while it can't and no scan runs.
    Task<> reprobeAccess();
    // The application came to the front: the user may have been in the system's settings.
    void appBecameActive();

    static void quit(const Platform& platform, const std::optional<std::string>& bundleIdentifier);
    static void relaunch(const Platform& platform);
    static void openFullDiskAccessSettings(const Platform& platform);

    const Platform& platform() const { return m_platform; }
    // Where screens start the operations above: tasks end with the library.
    TaskScope& tasks() { return m_tasks; }

  private:
    friend struct AppLibraryTesting; // lets tests make a running scan stale

    // What measuring learned of one application.
    struct Measurement {
        FileURL url;
        Bytes bundleBytes = 0;
        std::vector<LeftoverItem> leftovers;
    };
    // How long a walk for developer caches stays good for automatic scans, in seconds.
    static constexpr double developerCacheTTL = 900;
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

    // Looks for what removed applications left behind, judged by the applications that stand.
    Task<> findOrphans(int generation, ScanReason reason, StopToken stop);
    // Walks for developer caches; an automatic scan is content with a result that is young enough.
    Task<> findDeveloperCaches(int generation, ScanReason reason, StopToken stop);
    bool mayReuseDeveloperCaches(ScanReason reason) const;

    // Measures the Trash; a result that a newer scan has overtaken is dropped.
    Task<> measureTrash(int generation);
    void watchForAccess();
    Task<> accessWatchLoop(StopToken stop);

    std::vector<SweepEntry> cachePlan() const;
    std::vector<SweepEntry> developerPlan() const;
    std::vector<SweepEntry> orphanEntries(const std::vector<OrphanGroup>& groups) const;
    std::vector<SweepEntry> trashPlan() const;

    // The steps of a sweep. The references are to the sweep's own frame.
    Task<> emptyTrashIfAsked(const std::vector<SweepEntry>& entries, SweepReport& report);
    Task<> quitWhatGoes(const std::vector<SweepEntry>& entries);
    Task<> moveOne(const SweepEntry& entry, SweepReport& report, std::vector<TrashMove>& moves);
    void noteInaccessible(const std::vector<Uninstaller::Failure>& failures);
    // Makes the lists forget what has gone. What it costs goes with the number of paths and not with the number
    // of leftovers, but for the first of a sweep; an application is looked for among the applications.
    void forget(const std::vector<FileURL>& urls);
    void forgetLeftovers(const std::unordered_set<FileURL>& gone);
    void forgetApps(const std::unordered_set<FileURL>& gone);
    // Orphans and developer caches.
    void forgetFound(const std::unordered_set<FileURL>& gone);
    // Stores the operation, or takes the stored one away.
    void record(std::optional<UndoableOperation> operation);

    // The applications that visibleApps() gives, in order, without copying them.
    void forEachVisibleApp(FunctionRef<void(const InstalledApp&)> visit) const;

    const Platform m_platform;                  // references: copying it is cheap
    std::optional<TaskHandle> m_scanTask;       // of the latest scan, also after its end
    int m_scanGeneration = 0;                   // number of the latest scan; grows when one really starts
    std::optional<ScanReason> m_pendingRefresh; // a scan asked for while one runs
    ScanReason m_currentReason = ScanReason::user;
    std::optional<Date> m_developerCachesMeasuredAt; // end of the last walk; nothing before the first
    // Which applications hold a leftover. Made at need; empty when applications or leftovers may have joined since.
    std::optional<LeftoverIndex> m_holders;
    // All that orphans and developer caches list. Made at need; empty when some may have joined since.
    std::optional<std::unordered_set<FileURL>> m_found;
    TaskScope m_tasks; // last: its suspended frames go before what they use
};

} // namespace quillane
