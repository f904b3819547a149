#pragma once
#include "AppFilter.h"
#include "BulkRemoval.h"
#include "Defaults.h"
#include "DevCacheItem.h"
#include "DuplicateGroup.h"
#include "FilesMode.h"
#include "FunctionRef.h"
#include "InstalledApp.h"
#include "LeftoverIndex.h"
#include "LibrarySection.h"
#include "OrphanGroup.h"
#include "Platform.h"
#include "Published.h"
#include "RecentUninstall.h"
#include "StartupItem.h"
#include "StopToken.h"
#include "SweepCategory.h"
#include "SweepPlan.h"
#include "SweepReport.h"
#include "Task.h"
#include "TaskScope.h"
#include "TrashState.h"
#include "UndoableOperation.h"
#include "UninstallWatcher.h"
#include "UserFile.h"
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quillane {

// The one observable model object: every list that the screens show and the progress of the scan.
// Lives as long as the process. Main thread only; long work runs in jobs that get copies.
//
// Fields and operations stand by concern, and the concerns in the order of the source files that hold them:
//   AppLibrary.cpp            what is read at the launch
//   AppLibrary+Access.cpp     what must never be touched, and what the system does not let us see
//   AppLibrary+Automation.cpp what happens once an hour without being asked
//   AppLibrary+Developer.cpp  the finder of developer caches
//   AppLibrary+Duplicates.cpp the finder of copies
//   AppLibrary+Files.cpp      the lenses on the user's own files
//   AppLibrary+Finders.cpp    what every finder joins
//   AppLibrary+Measure.cpp    the measuring stage of a scan
//   AppLibrary+Nudges.cpp     what is told when it becomes true
//   AppLibrary+Orphans.cpp    the finder of orphans
//   AppLibrary+Plans.cpp      what could be removed
//   AppLibrary+Queries.cpp    the applications that a filter and a search let through
//   AppLibrary+Scan.cpp       a scan from its first job to its last
//   AppLibrary+Startup.cpp    what launchd starts by itself
//   AppLibrary+Sweep.cpp      a confirmed list, and the way back
//   AppLibrary+Uninstalls.cpp what was uninstalled behind our back
class AppLibrary {
  public:
    // Reads what survived the last launch from the defaults and scans nothing. The platform's ports must outlive
    // the library.
    explicit AppLibrary(const Platform& platform);
    AppLibrary(const AppLibrary&) = delete;
    AppLibrary& operator=(const AppLibrary&) = delete;

    const Platform& platform() const { return m_platform; }
    // Where screens start the operations below: tasks end with the library.
    TaskScope& tasks() { return m_tasks; }

    // Access

    // What must never be touched, by the exact text of its path.
    Published<std::set<std::string>> protectedPaths;
    Published<TrashSweeper::State> trashState;
    Published<bool> accessJustGranted{false};         // for 8 seconds after access was found granted
    Published<std::optional<TaskHandle>> accessWatch; // polls while the Trash can't be read
    // Paths that failed for lack of access since the last scan.
    Published<std::unordered_set<FileURL>> inaccessible;

    bool isProtected(const FileURL& url) const;
    // Takes effect at once and is stored at once, beside what another start of the program has stored.
    void setProtected(const FileURL& url, bool isProtected);
    // The same for each of them, stored once.
    void setProtected(const std::vector<FileURL>& urls, bool isProtected);
    // One look whether the Trash can be read by now; only while it can't and no scan runs.
    Task<> reprobeAccess();
    // The application came to the front: the user may have been in the system's settings, or in another start of the
    // program over the same ones.
    void appBecameActive();
    static void quit(const Platform& platform, const std::optional<std::string>& bundleIdentifier);
    static void relaunch(const Platform& platform);
    static void openFullDiskAccessSettings(const Platform& platform);

    // Automation

    // Begins to look once an hour, the first time an hour from now: a scan when one is due, the nudges, the weekly
    // reminder. Once it has begun it goes on as long as the library; a second call does nothing.
    void startAutomationLoop();
    // The moment of the last tick that ran a scan. Absent before the first, and when something else is stored there.
    std::optional<Date> lastAutomaticScan() const;
    void setLastAutomaticScan(std::optional<Date> date); // nothing forgets it

    // Developer

    Published<std::vector<DevCacheItem>> developerCaches; // as the last walk found them, largest first

    // The developer caches whose tool or kind the search lets through, in their order.
    std::vector<DevCacheItem> visibleDeveloperCaches() const;
    // The same where they lie: they stay until `developerCaches` changes.
    void forEachVisibleDeveloperCache(FunctionRef<void(const DevCacheItem&)> visit) const;
    // The sum over all developer caches, whatever the search says.
    Bytes totalDeveloperBytes() const;
    // The developer caches that a cleanup includes: those safe to sweep, less what is protected or out of reach.
    std::vector<DevCacheItem> sweepableDeveloperCaches() const;
    // Whatever is not protected, also what no cleanup would include: the user has asked for it.
    BulkRemoval removalForDeveloperItems(const std::vector<DevCacheItem>& items) const;

    // Duplicates

    Published<std::vector<DuplicateGroup>>
        duplicates; // as the last load found them, those that waste most first
    Published<bool> isLoadingDuplicates{false};
    Published<std::optional<std::string>> duplicateStatus; // what a load does now; absent outside one
    Published<std::optional<TaskHandle>> duplicatesTask;   // of the latest load, also after its end
    Published<bool> areDuplicatesStale{
        false}; // something came back since the last load that may belong to them

    // Looks for copies anew; a load that runs stops reading and changes nothing any more. Returns at once.
    void loadDuplicates();
    // The groups in which the path of any file holds the search, in their order.
    std::vector<DuplicateGroup> visibleDuplicates() const;
    // The same, each where it lies. `visit` changes nothing.
    void forEachVisibleDuplicate(FunctionRef<void(const DuplicateGroup&)> visit) const;
    // The sum over all groups, whatever the search says.
    Bytes totalWastedBytes() const;
    // All copies of each group but one, less what is protected: the one that stands in `keeping` under the group's id
    // stays, or the suggested one where none does. A location that is none of the group's files counts as none.
    BulkRemoval removalForDuplicates(const std::vector<DuplicateGroup>& groups,
                                     const std::unordered_map<std::string, FileURL>& keeping) const;

    // Files

    Published<std::vector<UserFile>> files; // of the lens that was loaded last, largest first
    Published<bool> isLoadingFiles{false};
    Published<std::optional<Bytes>> photosLibraryBytes;      // absent until measured, and where there is none
    Published<std::string> fileSearchText;                   // of the search lens; UTF-8
    Published<std::optional<UserFile::Kind>> fileSearchKind; // empty for any kind
    Published<std::optional<TaskHandle>> filesTask;          // of the latest load, also after its end
    Published<bool> areFilesStale{false}; // something came back since the last load that may belong to them

    FilesMode filesMode() const { return *m_filesMode; }
    // Another lens than the present one loads its files.
    void setFilesMode(FilesMode mode);
    // Looks through the lens and replaces the files when the answer is there. Of several loads the last one counts;
    // an empty search is answered at once. Returns at once.
    void loadFiles();
    // What the files take on this disk together.
    Bytes totalFileBytes() const;
    // Whatever is not protected: nothing of it comes back by itself, and the user has asked for it.
    BulkRemoval removalForFiles(const std::vector<UserFile>& selected) const;

    // Finders

    // The number beside a section; 0 for none.
    int badge(LibrarySection section) const;

    // Nudges

    // Tells what has become true since the last evaluation, of what the user wants to be told of, and remembers what
    // is true now. Does nothing but in the phase `ready`.
    void evaluateNudges();

    // Orphans

    Published<std::vector<OrphanItem>> orphans; // as the last scan found them, largest first

    // The groups of orphans that the search lets through, whole: by vendor or by the identifier of any item.
    std::vector<OrphanGroup> visibleOrphanGroups() const;
    // The same without copies, each for the time of its visit.
    void forEachVisibleOrphanGroup(FunctionRef<void(const OrphanGroupView&)> visit) const;
    // The sum over all orphans, whatever the search says.
    Bytes totalOrphanBytes() const;
    // What of the group may be moved to the Trash: less what is protected, needs administrator rights or is out
    // of reach. In their order.
    std::vector<OrphanItem> sweepableItems(const OrphanGroup& group) const;
    // The sweepable items of each group.
    BulkRemoval removalForOrphanGroups(const std::vector<OrphanGroup>& groups) const;

    // Plans

    // The categories ticked on the Overview; not kept across launches.
    Published<std::set<SweepCategory>> sweepSelection{
        {SweepCategory::caches, SweepCategory::developer, SweepCategory::orphans}};

    // The rows that a sweep of the category would take: only what is safe without asking. Computed afresh.
    std::vector<SweepEntry> plan(SweepCategory category) const;
    // The plans of all ticked categories, in their order; a path that several of them plan has the first's row.
    std::vector<SweepEntry> fullPlan() const;
    // The figure beside a category: exactly what a sweep of it alone would take.
    Bytes bytes(SweepCategory category) const;
    // What the category's row counts: the applications, locations or groups that have rows in its plan, or the
    // items of the Trash.
    int itemCount(SweepCategory category) const;
    // What a sweep of fullPlan() would take: less than the categories' figures together when they share paths.
    Bytes selectedSweepBytes() const;
    // What a cache cleanup of this application would remove: nothing when the application is protected, else
    // its regenerable leftovers less those that are protected or out of reach.
    std::vector<LeftoverItem> reclaimableCache(const InstalledApp& app) const;
    Bytes reclaimableCacheBytes(const InstalledApp& app) const;
    // Requests that answer a user's explicit choice. System applications and what is protected are left out.
    // A leftover that only a name ties to its application starts unticked, and so does one that an application
    // claims that stays.
    BulkRemoval removalForApps(const std::vector<InstalledApp>& selected) const;
    BulkRemoval removalForCache(const InstalledApp& app) const;

    // Queries

    Published<std::string> searchText; // the one search of all sections; UTF-8
    Published<AppFilter> filter{AppFilter::thirdParty};

    // The applications that pass the filter and the search, in the order of `apps`.
    std::vector<InstalledApp> visibleApps() const;
    // Whether visibleApps() would give any if nothing were searched for.
    bool hasFilteredApps() const;
    // The same where they lie, for whoever looks at many of them often: they stay until `apps` changes.
    void forEachVisibleApp(FunctionRef<void(const InstalledApp&)> visit) const;
    // The sum over visibleApps().
    Bytes totalVisibleBytes() const;
    // The first application at this location; nothing for no id or an unknown one.
    std::optional<InstalledApp> appWithID(const std::optional<FileURL>& id) const;

    // Scan

    // The state of the scan, whose stages follow each other in the order of the kinds. `done` and `total` count
    // applications and are 0 but while measuring.
    struct Phase {
        enum class Kind { idle, scanning, measuring, findingOrphans, findingDeveloperCaches, ready };
        Kind kind = Kind::idle;
        int done = 0;
        int total = 0;
        friend bool operator==(const Phase&, const Phase&) = default;
    };
    // Who asked for a scan. Sets the priority of the whole scan.
    enum class ScanReason { user, automatic };

    Published<std::vector<InstalledApp>> apps; // all applications, sorted by name
    Published<Phase> phase;

    // Starts a scan, or parks the request while one runs: a user's request outranks an automatic one.
    // Returns at once.
    void refresh(ScanReason reason);

    // Startup

    Published<std::vector<StartupItem>> startupItems; // as the last load found them, the worst first
    Published<bool> isLoadingStartup{false};
    Published<bool> areStartupItemsStale{
        false}; // something came back since the last load that may belong to them

    // Looks anew, judged by the applications that stand now. Returns at once. No load ends another: of several the
    // one that ends last has the word.
    void loadStartupItems();
    // Makes launchd let go of an agent until the next login, and then loads the items anew. Absent on success;
    // otherwise the message to show, and the list stays. A stop ends the attempt, whatever has come of it.
    Task<std::optional<std::string>> stopStartupItem(StartupItem item, StopToken stop = {});
    // The items whose label or owner the search lets through, in their order.
    std::vector<StartupItem> visibleStartupItems() const;
    // The same where they lie: they stay until `startupItems` changes.
    void forEachVisibleStartupItem(FunctionRef<void(const StartupItem&)> visit) const;
    // The items that are not in order, whatever the search says.
    int startupProblemCount() const;
    // What lies in the home folder, less what is protected: the rest needs administrator rights and is left out.
    BulkRemoval removalForStartupItems(const std::vector<StartupItem>& items) const;

    // Sweep

    Published<bool> isSweeping{false};
    Published<std::optional<std::string>> sweepStatus; // what is being done now; absent outside a sweep
    Published<int> sweepProcessed{0};                  // rows finished
    Published<int> sweepTotal{0};                      // rows received
    Published<Bytes> sweepReclaimedSoFar{0};
    Published<std::optional<UndoableOperation>> lastOperation; // the one sweep that can be put back
    Published<bool> isPuttingBack{false};                      // its items are on their way back

    // Runs a confirmed list to its end: the Trash first, then applications are asked to quit, then the rows
    // move one at a time, each checked against protection right before. Never stops at a failure and can't be
    // cancelled. The screens see to it that one sweep runs at a time. While a put back runs nothing is touched and
    // each row is told as failed: emptying the Trash would take what is about to come back.
    Task<SweepReport> runSweep(std::vector<SweepEntry> entries, std::string label);
    // Takes the last operation's items back, forgets the operation whatever the outcome, and starts a scan.
    // With no operation, an empty report and nothing else. While a sweep or another put back runs nothing is touched,
    // the operation stays, and each item is told as failed.
    Task<Uninstaller::Report> undoLastOperation();

    // Uninstalls

    // The applications that vanished without our doing, the one recorded last first. Stored at each change; without
    // a limit of number or age.
    Published<std::vector<RecentUninstall>> recentUninstalls;

    // Makes the watcher of "/Applications" and the home folder's "Applications" run or not, as the setting says by
    // now. To be called at the start and after each change of the setting. Returns at once.
    void syncUninstallWatcher();
    // Forgets every record with the same id.
    void dismissRecentUninstall(const RecentUninstall& record);
    // What of the record's leftovers is still there and not protected. Unticked starts what only a name ties to the
    // application, and what an application claims that is installed by now.
    BulkRemoval removalForRecentUninstall(const RecentUninstall& record) const;

  private:
    friend struct AppLibraryTesting; // lets tests make a running scan stale

    // Access

    // Protection as it is stored by now.
    void followProtection();
    // Measures the Trash; a result that a newer scan has overtaken is dropped.
    Task<> measureTrash(int generation);
    void watchForAccess();
    Task<> accessWatchLoop(StopToken stop);

    // Automation

    Task<> automationLoop(StopToken stop);
    // One look. Gives way to whatever is running, and does nothing at all while power is to be saved.
    Task<> automationTick(StopToken stop);
    bool isAutomaticScanDue(Date now) const;
    // Scans, then loads what starts by itself, and waits for both, but not for ever. `now` is when the tick began.
    Task<> scanAutomatically(Date now, StopToken stop);
    void remindWeekly(Date now);

    std::optional<TaskHandle> m_automationLoop; // empty before it has begun

    // Developer

    // How long a walk for developer caches stays good for automatic scans, in seconds.
    static constexpr double developerCacheTTL = 900;

    // Walks for developer caches.
    Task<> findDeveloperCaches(int generation, ScanReason reason, StopToken stop);
    // An automatic scan is content with a result that is young enough.
    bool mayReuseDeveloperCaches(ScanReason reason) const;
    void forEachSweepableDeveloperCache(FunctionRef<void(const DevCacheItem&)> visit) const;
    SweepPlan developerPlan(SweepPlan::Keeps keeps) const;

    std::optional<Date> m_developerCachesMeasuredAt; // end of the last walk; nothing before the first

    // Duplicates

    Task<> findDuplicates(StopToken stop);
    // Each group without the files that have gone; one that is left with fewer than two goes too.
    void forgetCopies(const std::unordered_set<FileURL>& gone);

    // Files

    // The files that a lens shows.
    using FileLens = std::function<std::vector<UserFile>(const Platform&, const StopToken&)>;

    FileLens fileLens(const std::string& searched) const;
    Task<> findFiles(FileLens lens, StopToken stop);

    Published<FilesMode> m_filesMode{FilesMode::large};

    // Finders

    // All that a finder joins, once its own file holds its field and its operations: one row of finders(), from
    // which the scan, the plans, the badges and the lists' forgetting are worked. Null where it has no such thing.
    struct Finder {
        LibrarySection section;
        SweepCategory category;                  // of its rows
        int (*badge)(const AppLibrary& library); // the number beside the section
        // Its stage of a scan; null for one that looks only when it is asked to.
        Task<> (AppLibrary::*find)(int generation, ScanReason reason, StopToken stop);
        // Whether this scan may leave the stage out and keep what an earlier one found; null for never.
        bool (AppLibrary::*mayReuse)(ScanReason reason) const;
        // What of it a cleanup takes without asking; null for nothing.
        SweepPlan (AppLibrary::*plan)(SweepPlan::Keeps keeps) const;
        // Adds the locations of all that is listed.
        void (*addLocations)(const AppLibrary& library, std::unordered_set<FileURL>& locations);
        // Drops what has gone. Observers hear of it only when something goes.
        void (*forget)(AppLibrary& library, const std::unordered_set<FileURL>& gone);
    };
    // In the order in which a scan runs their stages.
    static std::span<const Finder> finders();

    // The stages of all finders in their order. Ends early, and silently, when the scan has been superseded.
    Task<> findAll(int generation, ScanReason reason, StopToken stop);
    SweepPlan planOfFinders(SweepCategory category, SweepPlan::Keeps keeps) const;
    // Makes the lists of the finders forget what has gone.
    void forgetFound(const std::unordered_set<FileURL>& gone);
    // Says that a list of a finder may have gained something.
    void foundAnew() { m_found.reset(); }

    // All that the lists of the finders hold. Made at need; empty when some may have joined since.
    std::optional<std::unordered_set<FileURL>> m_found;

    // Measure

    // What measuring learned of one application.
    struct Measurement {
        FileURL url;
        Bytes bundleBytes = 0;
        std::vector<LeftoverItem> leftovers;
    };
    // An application's place in `apps` as the measuring began, by its location.
    using IndexByURL = std::unordered_map<FileURL, std::size_t>;

    // Fills in sizes and leftovers of all applications, a batch at a time, and tells progress in `phase`.
    Task<> measureAll(int generation, ScanReason reason, StopToken stop);
    // Writes into the application, which may have moved up in the list or have left it since the index was made.
    void publish(Measurement measured, const IndexByURL& indexByURL);

    // Nudges

    void nudgeOnThreshold();
    void nudgeOnLowDisk();
    void nudgeOnNewOrphans();
    void nudgeOnNewStartup();
    // What the next evaluation compares with: all that is there now, and nothing of what was there before.
    void setKnownOrphanVendors(const std::set<std::string>& vendors);
    void setKnownStartupLabels(const std::set<std::string>& labels);
    void postWeeklyReminder(Bytes reclaimable) const;
    // What is free of the volume on which the home folder lies, 0 to 1; nothing when it can't be told.
    static std::optional<double> freeDiskFraction(const Platform& platform);

    // Orphans

    // Looks for what removed applications left behind, judged by the applications that stand.
    Task<> findOrphans(int generation, ScanReason reason, StopToken stop);
    int orphanGroupCount() const;
    // What sweepableItems() leaves of a group.
    bool isSweepable(const OrphanItem& item) const;
    SweepPlan orphanPlan(SweepPlan::Keeps keeps) const;
    // Adds the sweepable items of one group.
    void add(const OrphanGroupView& group, SweepPlan& plan) const;

    // Plans

    SweepPlan planned(SweepCategory category, SweepPlan::Keeps keeps) const;
    SweepPlan plannedOfAllTicked() const;
    SweepPlan cachePlan(SweepPlan::Keeps keeps) const;
    SweepPlan trashPlan() const;

    // Queries

    int visibleAppCount() const;

    // Scan

    bool isScanning() const;
    // True when a newer scan has begun: a step of the older one then ends silently and changes nothing.
    // Asked after every suspension.
    bool isStale(int generation) const { return generation != m_scanGeneration; }
    // The scan from its first job to the phase `ready`, stage by stage.
    Task<> scan(ScanReason reason, int generation, StopToken stop);
    void publishUnmeasured(std::vector<InstalledApp> found);
    void pruneIcons() const;
    void serveParkedRefresh();

    std::optional<TaskHandle> m_scanTask;       // of the latest scan, also after its end
    int m_scanGeneration = 0;                   // number of the latest scan; grows when one really starts
    std::optional<ScanReason> m_pendingRefresh; // a scan asked for while one runs
    ScanReason m_currentReason = ScanReason::user;

    // Startup

    // `installed` are the applications as they stood when the load was asked for.
    Task<> findStartupItems(std::vector<InstalledApp> installed, StopToken stop);

    // Sweep

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
    // Marks the lists that no scan finds and that may lack what has come back; their screens load them anew.
    void noteComeBack(const std::vector<FileURL>& urls);
    // Stores the operation, in the place of whichever is stored.
    void record(UndoableOperation operation);
    // Takes the operation away that was put back; one that another start has recorded meanwhile stays.
    void forgetOperation();
    // The operation as it is stored by now; the one that is known where the settings were lost. Not while this library
    // makes one or puts one back.
    void followOperation();

    // Which applications hold a leftover. Made at need; empty when applications or leftovers may have joined since.
    std::optional<LeftoverIndex> m_holders;
    // What the running sweep has moved, and what it is about to move; empty outside one.
    std::unordered_set<FileURL> m_movedBySweep;

    // Uninstalls

    // Bundles have left the watched folders or have come to them. Asks for a scan, after the applications that are
    // gone have been looked up in the list as it stands.
    void applicationsChanged(const std::set<FileURL>& removed, const std::set<FileURL>& added);
    // The applications at these locations, less those that we moved to the Trash ourselves.
    std::vector<InstalledApp> appsGone(const std::set<FileURL>& removed) const;
    bool isOwnMove(const FileURL& url) const;
    // Records each that is gone and has not merely moved: whose identifier is in none of the bundles that came.
    Task<> recordVanished(std::vector<InstalledApp> gone, std::set<FileURL> added);
    Task<> recordUninstall(InstalledApp app, StopToken stop);
    // Tells the user what was left behind, if anything was and the user wants to be told.
    void notify(const RecentUninstall& record) const;
    // Changes the records, and the stored ones with what another start has recorded. Those stay when they can't be told
    // in JSON.
    void changeRecentUninstalls(const std::function<void(std::vector<RecentUninstall>&)>& change);
    // The records as they are stored by now.
    void followUninstalls();
    // The applications of this id that are still listed and no longer there.
    std::vector<InstalledApp> vanishedApps(const std::string& id) const;

    // What all of them work with

    // Whether something else is stored than was known, which is known from now on. Another start of the program over
    // the same settings stores there too.
    bool isStoredAnew(std::string_view key, std::optional<Defaults::Value>& known) const;

    const Platform m_platform; // references: copying it is cheap
    // As they were last seen, or stored, in the settings.
    std::optional<Defaults::Value> m_knownPaths;
    std::optional<Defaults::Value> m_knownOperation;
    std::optional<Defaults::Value> m_knownUninstalls;
    std::unique_ptr<UninstallWatcher> m_uninstallWatcher;
    TaskScope m_tasks; // last: its suspended frames go before what they use
};

} // namespace quillane
