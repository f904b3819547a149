#pragma once
#include "CommandRunner.h"
#include "TaskRunner.h"
#include "Workspace.h"

namespace quillane {

// The desktop of macOS: icons as the Finder shows them, and everything else by the system's own ways. `tasks` and
// `commands` must outlive it, and the jobs that it starts.
class MacWorkspace final : public Workspace {
  public:
    MacWorkspace(TaskRunner& tasks, CommandRunner& commands);

    std::shared_ptr<const IconImage> icon(const FileURL& url, int side) override;
    void open(const FileURL& url) override;
    void reveal(const std::vector<FileURL>& urls) override;
    void openFullDiskAccessSettings() override;
    // Ends by the application's ordinary way; the new one waits for that before it counts itself as the first.
    void relaunch() override;

  private:
    TaskRunner& m_tasks;
    CommandRunner& m_commands;
};

} // namespace quillane
