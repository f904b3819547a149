#pragma once
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QObject>
#include <QStringList>

namespace quillane {

// The file manager of a desktop.
class FakeFileManager : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

  public:
    explicit FakeFileManager(QDBusConnection bus) {
        bus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), this,
                           QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.freedesktop.FileManager1"));
    }

    QStringList shown;
    bool isRefusing = false;

  public slots:
    void ShowItems(const QStringList& urls, const QString& /*token*/) { // NOLINT: the interface's own name
        shown = urls;
        if (isRefusing) {
            sendErrorReply(QDBusError::Failed);
        }
    }
};

} // namespace quillane
