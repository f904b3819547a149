#pragma once
#include "FileURL.h"
#include "Previews.h"
#include "StopToken.h"
#include "Task.h"
#include "TaskScope.h"
#include <functional>
#include <memory>
#include <optional>

namespace quillane {

struct Platform;

// Gets the look of one file at a time, the one that was asked for last. One job runs at once; when another file is
// wanted meanwhile it is asked to stop, and its answer is dropped. Main thread only.
class ThumbnailLoader {
  public:
    // Told the picture of the file that is wanted; null when it has none.
    using Arrived = std::function<void(const std::shared_ptr<const IconImage>&)>;

    // The platform outlives the loader.
    ThumbnailLoader(const Platform& platform, PixelSize size, Arrived arrived);

    // The same file again changes nothing.
    void load(const FileURL& url);
    // Nothing is wanted any more.
    void forget();

  private:
    Task<> run();

    const Platform& m_platform;
    PixelSize m_size;
    Arrived m_arrived;
    std::optional<FileURL> m_url;    // what is wanted
    std::optional<FileURL> m_queued; // the same while no job has begun for it
    StopSource m_job;                // of the job that runs
    bool m_isRunning = false;
    TaskScope m_tasks; // last: its suspended frames go first
};

} // namespace quillane
