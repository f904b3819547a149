#pragma once
#include "FileURL.h"
#include "Platform.h"
#include "Published.h"
#include "TaskScope.h"
#include "Workspace.h"
#include <cstddef>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace quillane {

// The icons that the screens show, at most one for each location. Main thread only.
class IconCache {
  public:
    static IconCache& shared();

    // The side in points that is asked for; AppIcon scales.
    static constexpr int kPointSide = 32;
    // The side in pixels: sharp on a screen of double density.
    static constexpr int kPixelSide = 2 * kPointSide;

    // Where icons come from. Call before the first use, and with nullptr before the platform goes; both
    // forget what is cached. Icons that are being decoded then never arrive. Not from inside an observer of
    // `latestArrival`.
    void attach(const Platform* platform);

    // The icon of whatever lies at `url`, or null while it is being decoded off the main thread: the first
    // request starts that and `latestArrival` tells its end. A location without an icon of its own gets the
    // platform's generic one and is cached like any other. Always null without a platform.
    std::shared_ptr<const IconImage> icon(const FileURL& url);

    // The location whose icon came last. Notifies on every arrival, also when the same location comes twice
    // in a row. Observe it to repaint what shows that location.
    Published<std::optional<FileURL>> latestArrival;

    // Keeps only these locations. The scan calls it at its end with all applications. An icon that is still
    // being decoded for another location is dropped when it comes.
    void prune(const std::unordered_set<FileURL>& keeping);
    // Cached icons and those on their way.
    std::size_t count() const { return m_icons.size(); }

    IconCache(const IconCache&) = delete;
    IconCache& operator=(const IconCache&) = delete;

  private:
    IconCache() = default;

    Task<> load(FileURL url);
    void arrive(const FileURL& url, std::shared_ptr<const IconImage> image);

    std::unordered_map<FileURL, std::shared_ptr<const IconImage>> m_icons; // null while loading
    const Platform* m_platform = nullptr;
    std::unique_ptr<TaskScope> m_tasks; // last: its suspended frames go first
};

} // namespace quillane
