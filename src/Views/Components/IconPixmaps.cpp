#include "Components/IconPixmaps.h"
#include "IconCache.h"
#include <QImage>
#include <cmath>

namespace quillane {

namespace {

QPixmap scaled(const IconImage& image, int side, double ratio) {
    if (image.isEmpty()) {
        return {};
    }
    const QImage whole(image.rgba.data(), image.width, image.height, qsizetype{4} * image.width,
                       QImage::Format_RGBA8888);
    const int pixels = static_cast<int>(std::lround(side * ratio));
    QPixmap pixmap =
        QPixmap::fromImage(whole.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

} // namespace

QPixmap IconPixmaps::at(const FileURL& url, double devicePixelRatio) {
    const auto image = IconCache::shared().icon(url);
    if (!image) {
        return {};
    }
    Scaled& entry = m_scaled[url];
    if (entry.source != image || entry.pixmap.devicePixelRatio() != devicePixelRatio) {
        entry = {image, scaled(*image, m_side, devicePixelRatio)};
    }
    return entry.pixmap;
}

} // namespace quillane
