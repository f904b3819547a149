#pragma once
#include "FileURL.h"
#include "Platform.h"
#include "Published.h"
#include "TaskScope.h"
#include "Workspace.h"
#include <map>
#include <memory>
#include <optional>
#include <unordered_set>

namespace quillane {

// The icons that the screens show, at most one for each location. Main thread only.
class IconCache {
  public:
    static IconCache& shared();

    // The side in points that is asked for; AppIcon scales.
    static constexpr int kPointSide = 32;

    // Where icons come from. Call before the first use, and with nullptr before the platform goes; both
    // forget what is cached.
    void attach(const Platform* platform);

    // The icon of whatever lies at `url`, or null while it is being decoded off the main thread: the first
    // request starts that and `latestArrival` tells its end. A location without an icon of its own gets the
    // platform's generic one and is cached like any other.
    std::shared_ptr<const IconImage> icon(const FileURL& url);

    // The location whose icon came last. Observe it to repaint what shows that location.
    Published<std::optional<FileURL>> latestArrival;

    // Keeps only these locations. The scan calls it at its end with all applications.
    void prune(const std::unordered_set<FileURL>& keeping);
    std::size_t count() const { return m_icons.size(); }

  private:
    IconCache() = default;

    struct Entry {
        std::shared_ptr<const IconImage> image; // null while loading
    };
    std::map<FileURL, Entry> m_icons;
    const Platform* m_platform = nullptr;
    std::unique_ptr<TaskScope> m_tasks;
};

} // namespace quillane
