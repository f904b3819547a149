#include "LandedItems.h"
#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

namespace quillane {

void LandedItems::note(const FileURL& place) {
    struct stat status = {};
    const bool isKnown = ::lstat(place.path().c_str(), &status) == 0;
    const std::lock_guard lock(m_mutex);
    forget(place);
    if (!isKnown) {
        return;
    }
    m_items[place] = {status.st_dev, status.st_ino};
    m_order.push_back(place);
    if (m_order.size() > m_most) {
        m_items.erase(m_order.front());
        m_order.pop_front();
    }
}

bool LandedItems::mayStillLie(const FileURL& place) const {
    struct stat status = {};
    const bool isTold = ::lstat(place.path().c_str(), &status) == 0;
    const bool isMissing = !isTold && errno == ENOENT;
    const std::lock_guard lock(m_mutex);
    const auto noted = m_items.find(place);
    if (noted == m_items.end() || (!isTold && !isMissing)) {
        return true;
    }
    return isTold && noted->second == Identity{status.st_dev, status.st_ino};
}

// A name that is given twice is rare: what was noted is looked for one by one only then.
void LandedItems::forget(const FileURL& place) {
    if (m_items.erase(place) > 0) {
        m_order.erase(std::ranges::find(m_order, place));
    }
}

} // namespace quillane
