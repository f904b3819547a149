#pragma once
#include "DirectoryWatch.h"
#include "FileURL.h"
#include "Platform.h"
#include "StopToken.h"
#include "Task.h"
#include "TaskHandle.h"
#include "TaskScope.h"
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace quillane {

// Notices that application bundles vanish from folders or appear in them, two seconds after the last change there.
// Only what lies directly in a folder counts, and only what happens while this lives. What a folder held is kept in mind
// as long as it can't be read, and is no longer there when the folder itself is missing. The folders are listed in jobs,
// never two at once. Main thread only.
class UninstallWatcher {
  public:
    // What has gone since the last look and what has come, never both empty; each as the file system's standard form
    // of a path.
    using OnChange = std::function<void(const std::set<FileURL>& removed, const std::set<FileURL>& added)>;

    // Looks what is there now. `onChange` is called on the main thread, at a later turn, and must not let the watcher
    // go. The platform's ports must outlive the watcher.
    UninstallWatcher(const Platform& platform, std::vector<FileURL> directories, OnChange onChange);
    UninstallWatcher(const UninstallWatcher&) = delete;
    UninstallWatcher& operator=(const UninstallWatcher&) = delete;

    // Watches each folder that can be watched; the others are left out. Begins anew when it runs already.
    void start();
    // Nothing is watched any more, and a change that has not been told yet never is.
    void stop();

  private:
    // Looks when the folders have been quiet for two seconds, counted from the last call.
    void scheduleDiff();
    Task<> diffWhenQuiet(StopToken stop);
    // Lists the folders and tells what is different. A result that was asked to stop meanwhile is dropped.
    Task<> diff(StopToken stop);
    // The bundles that lie directly in each of the folders, in their order; nothing where a folder could not be read.
    using Bundles = std::vector<std::optional<std::set<FileURL>>>;
    void compare(const Bundles& current);
    // Blocks; any thread.
    static Bundles listBundles(const Platform& platform, const std::vector<FileURL>& directories);

    const Platform m_platform;
    const std::vector<FileURL> m_directories;
    const OnChange m_onChange;
    Bundles m_known;                      // when each folder was last read; nothing before the first time
    std::optional<TaskHandle> m_debounce; // the pending diff
    bool m_isListing = false;
    std::optional<StopToken> m_waiting; // of the diff that came due while a listing ran
    std::vector<std::unique_ptr<DirectoryWatch::Source>> m_sources;
    TaskScope m_tasks; // last: its suspended frames go before what they use
};

} // namespace quillane
