#include "TimeZoneWatch.h"
#include <QFileInfo>
#include <utility>

namespace quillane {

// The folder is watched, and not the link: a watcher follows a link, and the file behind it never changes. By its own
// place: on a Mac "/etc" is a link itself, and what tells of changes there names no links.
TimeZoneWatch::TimeZoneWatch(const QString& link, QObject* parent)
    : QObject(parent)
    , m_link(link)
    , m_mark(mark()) {
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] { look(); });
    m_watcher.addPath(QFileInfo(QFileInfo(link).path()).canonicalFilePath());
}

TimeZoneWatch::Mark TimeZoneWatch::mark() const {
    const QFileInfo info(m_link);
    return {info.symLinkTarget(), info.lastModified()};
}

void TimeZoneWatch::look() {
    auto now = mark();
    if (now != m_mark) {
        m_mark = std::move(now);
        emit changed();
    }
}

} // namespace quillane
