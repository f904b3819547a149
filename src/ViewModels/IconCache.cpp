#include "IconCache.h"
#include "Detached.h"
#include <utility>

namespace quillane {

IconCache& IconCache::shared() {
    static IconCache cache;
    return cache;
}

void IconCache::attach(const Platform* platform) {
    m_tasks.reset();
    m_icons.clear();
    m_platform = platform;
    if (platform != nullptr) {
        m_tasks = std::make_unique<TaskScope>(platform->tasks);
    }
}

std::shared_ptr<const IconImage> IconCache::icon(const FileURL& url) {
    if (m_platform == nullptr) {
        return nullptr;
    }
    const auto [entry, isNew] = m_icons.try_emplace(url);
    if (isNew) {
        m_tasks->start([this, url](const StopToken&) { return load(url); });
    }
    return entry->second;
}

Task<> IconCache::load(FileURL url) {
    auto image =
        co_await detached(m_platform->tasks, Priority::utility, [&workspace = m_platform->workspace, url] {
            return workspace.icon(url, kPixelSide);
        });
    arrive(url, std::move(image));
}

// Nobody waits any more for a location that was pruned meanwhile.
void IconCache::arrive(const FileURL& url, std::shared_ptr<const IconImage> image) {
    const auto entry = m_icons.find(url);
    if (entry == m_icons.end()) {
        return;
    }
    entry->second = std::move(image);
    latestArrival.modify([&url](std::optional<FileURL>& latest) { latest = url; });
}

void IconCache::prune(const std::unordered_set<FileURL>& keeping) {
    std::erase_if(m_icons, [&keeping](const auto& entry) { return !keeping.contains(entry.first); });
}

} // namespace quillane
