#pragma once
#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <utility>

namespace quillane {

// Notices that the machine's time zone has become another: that the link to its file, or a file in the link's
// place, has been replaced. Sleeps until then. Main thread only.
class TimeZoneWatch final : public QObject {
    Q_OBJECT

  public:
    explicit TimeZoneWatch(const QString& link, QObject* parent = nullptr);

  signals:
    void changed();

  private:
    void look();

    // Where the link leads, and how old the file behind it is.
    using Mark = std::pair<QString, QDateTime>;
    Mark mark() const;

    QString m_link;
    Mark m_mark;
    QFileSystemWatcher m_watcher;
};

} // namespace quillane
