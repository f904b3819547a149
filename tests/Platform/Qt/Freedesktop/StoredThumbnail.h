#pragma once
#include "DiskFolder.h"
#include "FileURL.h"
#include "PictureFiles.h"
#include "ThumbnailStore.h"
#include <QCryptographicHash>
#include <QImage>
#include <string>

namespace quillane {

// Where a desktop's program keeps the thumbnail of a file, below the store's folder.
inline std::string thumbnailPlace(const std::string& flavor, const FileURL& url) {
    const auto digest = QCryptographicHash::hash(QByteArray::fromStdString(ThumbnailStore::uriOf(url)),
                                                 QCryptographicHash::Md5);
    return flavor + "/" + digest.toHex().toStdString() + ".png";
}

// Lays one there, as the program does.
inline void storeThumbnail(DiskFolder& store, const std::string& flavor, const FileURL& url, QImage picture,
                           const std::string& modified) {
    picture.setText(QStringLiteral("Thumb::URI"), QString::fromStdString(ThumbnailStore::uriOf(url)));
    picture.setText(QStringLiteral("Thumb::MTime"), QString::fromStdString(modified));
    store.file(thumbnailPlace(flavor, url), PictureFiles::encoded(picture, "png"));
}

} // namespace quillane
