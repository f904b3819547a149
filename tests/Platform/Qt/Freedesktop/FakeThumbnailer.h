#pragma once
#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <functional>
#include <utility>

namespace quillane {

// The thumbnailing service of a desktop. Lives on the test's own thread.
class FakeThumbnailer : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.thumbnails.Thumbnailer1")

  public:
    explicit FakeThumbnailer(QDBusConnection bus)
        : m_bus(std::move(bus)) {
        m_bus.registerObject(QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1"), this,
                             QDBusConnection::ExportAllSlots);
        comeBack();
    }

    void leave() { m_bus.unregisterService(QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1")); }
    void comeBack() { m_bus.registerService(QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1")); }

    QStringList places = {QStringLiteral("file"), QStringLiteral("file"), QStringLiteral("sftp")};
    QStringList types = {QStringLiteral("video/mp4"), QStringLiteral("video/webm"),
                         QStringLiteral("image/heif")};
    QStringList flavors = {QStringLiteral("normal"), QStringLiteral("large"), QStringLiteral("x-large")};
    std::function<void()> whenQueued = [] {};

    std::function<void()> whenAsked = [] {};
    int questions = 0;    // about what it can do
    bool refuses = false; // every request
    QStringList uris;     // of the last request
    QStringList kinds;
    QString flavor;
    QString scheduler;
    uint withdrawn = 0;

  public slots:
    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
    QStringList GetSupported(QStringList& mimeTypes) {
        ++questions;
        whenAsked();
        mimeTypes = types;
        return places;
    }
    QStringList GetFlavors() { return flavors; }
    uint Queue(const QStringList& wanted, const QStringList& mimeTypes, const QString& size,
               const QString& queue, uint /*handleToUnqueue*/) {
        if (refuses) {
            sendErrorReply(QStringLiteral("org.freedesktop.thumbnails.Error.Queueing"));
            return 0;
        }
        uris = wanted;
        kinds = mimeTypes;
        flavor = size;
        scheduler = queue;
        whenQueued();
        return 7;
    }
    void Dequeue(uint handle) { withdrawn = handle; }
    // NOLINTEND(readability-identifier-naming)

  private:
    QDBusConnection m_bus;
};

} // namespace quillane
