#pragma once
#include "FileSystem.h"
#include "SessionBus.h"
#include "TaskRunner.h"
#include "Workspace.h"

namespace quillane {

// The desktop of Linux: icons out of application bundles, everything else by the desktop's own programs.
// Items are opened by "xdg-open" and revealed by the file manager on the message bus; a desktop without one
// that answers opens the folders that hold the items. Both get the items as URLs, so that names of any bytes
// arrive, and no shell sees them.
class DesktopWorkspace final : public Workspace {
  public:
    // Whether the paths of `files` mean the same to the desktop.
    enum class Reach {
        machine,
        volume // they lie in a folder that stands for a volume: opening and revealing do nothing
    };

    // `files` and `tasks` must outlive it, and so must the jobs that it starts: only they wait.
    DesktopWorkspace(const FileSystem& files, TaskRunner& tasks, Reach reach,
                     SessionBus bus = sharedSessionBus);

    std::shared_ptr<const IconImage> icon(const FileURL& url, int side) override;
    void open(const FileURL& url) override;
    void reveal(const std::vector<FileURL>& urls) override;
    // Linux has no such page: nothing happens.
    void openFullDiskAccessSettings() override {}
    // Ends by the event loop's ordinary way; the new one waits for that before it counts itself as the first.
    void relaunch() override;

  private:
    const FileSystem& m_files;
    TaskRunner& m_tasks;
    Reach m_reach;
    SessionBus m_bus;
};

} // namespace quillane
