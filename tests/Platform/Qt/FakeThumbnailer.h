#pragma once
#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <functional>

namespace quillane {

// The thumbnailing service of a desktop. Lives on the test's own thread.
class FakeThumbnailer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.thumbnails.Thumbnailer1")

  public:
    explicit FakeThumbnailer(QDBusConnection bus) {
        bus.registerObject(QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1"), this,
                           QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1"));
    }

    QStringList places = {QStringLiteral("file"), QStringLiteral("file"), QStringLiteral("sftp")};
    QStringList types = {QStringLiteral("video/mp4"), QStringLiteral("video/webm"),
                         QStringLiteral("image/heif")};
    QStringList flavors = {QStringLiteral("normal"), QStringLiteral("large"), QStringLiteral("x-large")};
    std::function<void()> whenQueued = [] {};

    int questions = 0; // about what it can do
    QStringList uris;  // of the last request
    QStringList kinds;
    QString flavor;
    QString scheduler;
    uint withdrawn = 0;

  public slots:
    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
    QStringList GetSupported(QStringList& mimeTypes) {
        ++questions;
        mimeTypes = types;
        return places;
    }
    QStringList GetFlavors() { return flavors; }
    uint Queue(const QStringList& wanted, const QStringList& mimeTypes, const QString& size,
               const QString& queue, uint /*handleToUnqueue*/) {
        uris = wanted;
        kinds = mimeTypes;
        flavor = size;
        scheduler = queue;
        whenQueued();
        return 7;
    }
    void Dequeue(uint handle) { withdrawn = handle; }
    // NOLINTEND(readability-identifier-naming)
};

} // namespace quillane
