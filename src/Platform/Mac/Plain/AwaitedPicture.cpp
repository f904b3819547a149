#include "AwaitedPicture.h"
#include <utility>

namespace quillane {

void AwaitedPicture::give(Picture picture) {
    {
        const std::lock_guard lock(m_mutex);
        if (!m_picture) {
            m_picture = std::move(picture);
        }
    }
    m_given.notify_all();
}

std::optional<AwaitedPicture::Picture> AwaitedPicture::wait(const StopToken& stop, const Clock& clock,
                                                            Duration patience, Duration betweenLooks) {
    const auto end = clock.instant() + patience;
    std::unique_lock lock(m_mutex);
    while (!stop.stopRequested()) {
        if (m_picture) {
            return m_picture;
        }
        if (clock.instant() >= end) {
            return std::nullopt;
        }
        m_given.wait_for(lock, betweenLooks);
    }
    return std::nullopt;
}

} // namespace quillane
