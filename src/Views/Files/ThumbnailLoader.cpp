#include "Files/ThumbnailLoader.h"
#include "Detached.h"
#include "Platform.h"
#include "TaskRunner.h"
#include <utility>

namespace quillane {

ThumbnailLoader::ThumbnailLoader(const Platform& platform, PixelSize size, Arrived arrived)
    : m_platform(platform)
    , m_size(size)
    , m_arrived(std::move(arrived))
    , m_tasks(platform.tasks) {}

void ThumbnailLoader::load(const FileURL& url) {
    if (m_url == url) {
        return;
    }
    forget();
    m_url = url;
    m_queued = url;
    if (!m_isRunning) {
        m_isRunning = true;
        m_tasks.start([this](const StopToken&) { return run(); });
    }
}

void ThumbnailLoader::forget() {
    m_url.reset();
    m_queued.reset();
    m_job.requestStop();
}

Task<> ThumbnailLoader::run() {
    while (const auto queued = std::exchange(m_queued, std::nullopt)) {
        const FileURL& url = *queued;
        m_job = StopSource();
        const auto picture =
            co_await detached(m_platform.tasks, Priority::userInitiated,
                              [&previews = m_platform.previews, url, size = m_size, stop = m_job.token()] {
                                  return previews.thumbnail(url, size, stop);
                              });
        if (m_url == url) {
            m_arrived(picture);
        }
    }
    m_isRunning = false;
}

} // namespace quillane
