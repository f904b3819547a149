#include "ImageDecoder.h"
#include "PictureHead.h"
#include "Pictures.h"
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <utility>

namespace quillane::ImageDecoder {
namespace {

constexpr Bytes kMostKept = Bytes{kMostMegabytes} << 20U;

// By readers that take all bytes of a file before they look at any.
bool isReadWhole(std::string_view form) {
    return form == "webp" || form == "avif" || form == "heif" || form == "jxl" || form == "ico";
}

bool isAllowed(QIODevice& device, std::string_view form, std::string_view head) {
    if (form == "jpeg") {
        const auto kept = PictureHead::bytesKeptOfJpeg(head);
        return kept && *kept <= kMostKept;
    }
    if (form == "svg") {
        return device.size() <= kMostSvgBytes && static_cast<qint64>(head.size()) >= device.size() &&
               PictureHead::isHarmlessSvg(head);
    }
    return !isReadWhole(form) || device.size() <= kMostKept;
}

// A form that files are decoded from here; PDF has its own way.
bool isPicture(std::string_view form) {
    return !form.empty() && form != "pdf";
}

QSize wantedOf(QImageReader& reader, PixelSize wanted, Fit fit) {
    const bool isTurned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    const QSize size = isTurned ? reader.size().transposed() : reader.size();
    const QSize shown = fitted(size, wanted, fit, 1);
    return isTurned ? shown.transposed() : shown;
}

QImage read(QIODevice& device, std::string_view form, PixelSize wanted, Fit fit) {
    QImageReader reader(&device, QByteArray(form.data(), static_cast<qsizetype>(form.size())));
    reader.setAutoDetectImageFormat(false); // no other reader gets the bytes
    reader.setAutoTransform(true);
    if (!reader.size().isEmpty()) {
        reader.setScaledSize(wantedOf(reader, wanted, fit));
    }
    return reader.read();
}

// By the library and not through the image readers: for those it is a plugin, which some systems package apart.
QImage drawn(QIODevice& device, PixelSize wanted, Fit fit) {
    QSvgRenderer renderer;
    if (!renderer.load(device.readAll()) || renderer.defaultSize().isEmpty()) {
        return {};
    }
    QImage image(fitted(renderer.defaultSize(), wanted, fit, kMostPreviewSide),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

} // namespace

void limitMemory() {
    QImageReader::setAllocationLimit(kMostMegabytes);
}

std::optional<IconImage> decoded(QIODevice& device, std::string_view head, PixelSize wanted, Fit fit) {
    const auto form = PictureHead::formOf(head);
    if (!isPicture(form) || !isAllowed(device, form, head)) {
        return std::nullopt;
    }
    const QImage image = form == "svg" ? drawn(device, wanted, fit) : read(device, form, wanted, fit);
    if (image.isNull()) {
        return std::nullopt;
    }
    return shrunk(Pictures::fromImage(image), wanted, fit);
}

IconImage shrunk(IconImage picture, PixelSize wanted, Fit fit) {
    const QSize size = fitted({picture.width, picture.height}, wanted, fit);
    if (picture.isEmpty() || size == QSize(picture.width, picture.height)) {
        return picture;
    }
    const QImage image(picture.rgba.data(), picture.width, picture.height, qsizetype{4} * picture.width,
                       QImage::Format_RGBA8888);
    return Pictures::fromImage(image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

} // namespace quillane::ImageDecoder
