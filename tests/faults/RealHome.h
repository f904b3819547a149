#pragma once
#include "AppLibrary.h"
#include "DesktopStorage.h"
#include "FakeMetadata.h"
#include "FakeRunningApplications.h"
#include "FakeWorkspace.h"
#include "FileDefaults.h"
#include "FolderTrash.h"
#include "ManualClock.h"
#include "PosixFileSystem.h"
#include "ScriptedCommandRunner.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quillane {

// A home folder on the disk with what a sweep takes and what it leaves. Items are named by their path below the
// home folder; no two have the same content.
class RealHome {
  public:
    RealHome();

    // What a sweep takes: files, folders, a link that leads nowhere, an application, two of one name.
    static const std::vector<std::string>& rows();
    static constexpr const char* kProtected = "Library/Caches/protected";
    static constexpr const char* kBystander = "Documents/letter";
    // The one item that is restored into a folder that is gone by then.
    static constexpr const char* kDeep = "Documents/deep/er/file";

    std::filesystem::path path(const std::string& below = {}) const { return disk.path() + "/home/" + below; }
    std::string settingsPath() const { return FileDefaults::userPath(disk.path() + "/home"); }
    // The content of each item that was laid, by the item.
    const std::map<std::string, std::string>& items() const { return m_items; }
    bool isHome(const std::string& item) const;
    // The items of a folder on the disk, by what they hold: path of the item below the home folder, or what
    // was found that is none. Empty for a folder that is missing.
    std::multimap<std::string, std::filesystem::path> itemsIn(const std::filesystem::path& folder) const;

    TemporaryFolder disk;

  private:
    std::map<std::string, std::string> m_items;
};

// All that lies at a path: the text of a link, the content of a file, everything below a folder with names.
// Links are not followed. Empty when nothing is there.
std::string everythingAt(const std::filesystem::path& path);

// The adapters of the sample Mac, over the home folder as "/home".
struct PlainAdapters {
    PlainAdapters(const RealHome& home, const Clock&)
        : files(home.disk.path(), FileURL("/home"))
        , trash(home.disk.path(), FileURL("/home"))
        , defaults(home.settingsPath()) {}
    static FileURL url(const RealHome&, const std::string& below) { return FileURL("/home/" + below); }
    static std::filesystem::path onDisk(const RealHome& home, const FileURL& url) {
        return home.disk.path() + url.path();
    }
    static std::filesystem::path trashFolder(const RealHome& home) { return home.path(".Trash"); }
    static constexpr bool kHasRecords = false;

    PosixFileSystem files;
    FolderTrash trash;
    FileDefaults defaults;
};

// The adapters of the program on Linux, over the machine itself. The reserve is not there before it is laid.
struct DesktopAdapters : DesktopStorage {
    DesktopAdapters(const RealHome& home, const Clock& clock)
        : DesktopStorage(atHome(home, clock), kReserve) {}
    static FileURL url(const RealHome& home, const std::string& below) { return FileURL(home.path(below)); }
    static std::filesystem::path onDisk(const RealHome&, const FileURL& url) { return url.path(); }
    static std::filesystem::path trashFolder(const RealHome& home) {
        return home.path(".local/share/Trash/files");
    }
    static std::string reservePath(const RealHome& home) { return home.settingsPath() + ".reserve"; }
    static constexpr bool kHasRecords = true;
    static constexpr SpaceReserve::Size kReserve{.whole = 1 << 20, .forSettings = 1 << 18};

  private:
    static const Clock& atHome(const RealHome& home, const Clock& clock) {
        ::setenv("HOME", home.path().parent_path().c_str(),
                 1); // NOLINT(concurrency-mt-unsafe): before threads
        return clock;
    }
};

// The ports of one start of the program. Time and threads are the caller's.
template <class Adapters>
struct RealPorts {
    RealPorts(const RealHome& home, Clock& clock, TaskRunner& tasks)
        : adapters(home, clock)
        , platform{adapters.files, commands,       metadata, clock,   tasks,
                   workspace,      adapters.trash, running,  defaults} {}

    Adapters adapters;
    FileDefaults& defaults = adapters.defaults;
    ScriptedCommandRunner commands; // nothing can be started
    FakeMetadata metadata;
    FakeWorkspace workspace;
    FakeRunningApplications running;
    const Platform platform;
};

// One start of the program over the home folder, with time and threads in the test's hand.
template <class Adapters>
struct Launch {
    explicit Launch(const RealHome& home)
        : ports(home, clock, runner) {}

    SweepReport sweep(std::vector<SweepEntry> entries, const std::string& label) {
        std::optional<SweepReport> report;
        library.tasks().start(
            [&](StopToken) -> Task<> { report = co_await library.runSweep(entries, label); });
        runner.runAll();
        return report.value();
    }
    // The put back up to its job, which waits to be run.
    void startUndo() {
        library.tasks().start([this](StopToken) -> Task<> { undone = co_await library.undoLastOperation(); });
        runner.settle();
    }
    Uninstaller::Report undo() {
        startUndo();
        runner.runAll();
        return undone.value();
    }

    StepTaskRunner runner;
    ManualClock clock{runner};
    RealPorts<Adapters> ports;
    std::optional<Uninstaller::Report> undone;
    AppLibrary library{ports.platform};
};

// Rows for these items, in categories of all kinds.
template <class Adapters>
std::vector<SweepEntry> entriesFor(const RealHome& home, const std::vector<std::string>& items) {
    constexpr SweepCategory kCategories[] = {SweepCategory::caches, SweepCategory::files,
                                             SweepCategory::orphans};
    std::vector<SweepEntry> entries;
    for (const auto& item : items) {
        const auto url = Adapters::url(home, item);
        const auto category =
            url.pathExtension() == "app" ? SweepCategory::apps : kCategories[entries.size() % 3];
        entries.push_back({url, category, item, "subtitle", 10});
    }
    return entries;
}

// The places at which an item lies now: its own, and those in the Trash.
template <class Adapters>
std::vector<std::filesystem::path> placesOf(const RealHome& home, const std::string& item) {
    std::vector<std::filesystem::path> places;
    if (home.isHome(item)) {
        places.push_back(home.path(item));
    }
    const auto trashed = home.itemsIn(Adapters::trashFolder(home));
    for (auto [at, end] = trashed.equal_range(item); at != end; ++at) {
        places.push_back(at->second);
    }
    return places;
}

// The record of what the Trash holds at this place; nothing when it has none.
std::optional<std::string> recordedOrigin(const std::filesystem::path& inTrash);
// The names of records whose item is not in the Trash.
std::set<std::string> recordsWithoutItem(const std::filesystem::path& trashFolder);

} // namespace quillane
