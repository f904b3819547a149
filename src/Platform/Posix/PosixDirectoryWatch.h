#pragma once
#include "DirectoryWatch.h"
#include "FolderEvents.h"
#include "TaskRunner.h"
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace quillane {

// Folders of the machine, or of a volume that lies in one of its folders, watched by the system. One thread waits for
// the system's word, from the first folder on, and uses no CPU between. It posts one job to the main thread and no
// second one before that has begun, however much happens.
class PosixDirectoryWatch final : public DirectoryWatch {
  public:
    // The path by which the machine reaches a location. Main thread.
    using PathOf = std::function<std::string(const FileURL&)>;

    // The runner must outlive this; its pools are not used.
    explicit PosixDirectoryWatch(
        TaskRunner& tasks, PathOf pathOf = [](const FileURL& folder) { return folder.path(); });
    ~PosixDirectoryWatch() override;
    PosixDirectoryWatch(const PosixDirectoryWatch&) = delete;
    PosixDirectoryWatch& operator=(const PosixDirectoryWatch&) = delete;

    std::unique_ptr<Source> watch(const FileURL& folder, std::function<void()> changed) override;

  private:
    class Held;
    struct Sources;

    // False when there can be no such thread.
    bool followEvents();
    void letGo(int source);

    TaskRunner& m_tasks;
    const PathOf m_pathOf;
    std::shared_ptr<Sources> m_sources; // shared with the posted job, which may come after this has gone
    int m_lastSource = 0;
    std::unique_ptr<FolderEvents> m_events; // stays once there is a thread
    std::optional<std::thread> m_thread;    // last: it uses all of this
};

} // namespace quillane
