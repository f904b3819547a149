#pragma once
#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QWidget>

namespace quillane {

// The widget as a person sees it at one and a half times the size.
inline QImage pictureOf(QWidget& widget) {
    constexpr double kRatio = 1.5;
    QImage picture(widget.size() * kRatio, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(kRatio);
    picture.fill(Qt::gray); // behind round corners
    widget.render(&picture);
    return picture;
}

// Under the build folder, for whoever wants to look. False when it cannot be written.
inline bool keepPicture(const QImage& picture, const QString& name) {
    const QDir folder(QCoreApplication::applicationDirPath() + "/../../../pictures");
    return QDir().mkpath(folder.path()) && picture.save(folder.filePath(name + ".png"));
}

} // namespace quillane
