#include "Pictures.h"
#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace quillane::Pictures {
namespace {

constexpr int kLeastSide = 16;
// Shapes are drawn in this square and scaled.
constexpr qreal kCanvas = 64;

const QColor kOutline(0x6b, 0x70, 0x78);
const QColor kLight(0xd9, 0xdc, 0xe1);
const QColor kMiddle(0xb4, 0xb9, 0xc1);
const QColor kDark(0x8d, 0x93, 0x9d);

QLinearGradient shading(const QColor& top, const QColor& bottom) {
    QLinearGradient gradient(0, 0, 0, kCanvas);
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    return gradient;
}

void drawApplication(QPainter& painter) {
    painter.setBrush(shading(kLight, kMiddle));
    painter.drawRoundedRect(QRectF(6, 6, 52, 52), 12, 12);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kOutline, 3));
    painter.drawEllipse(QRectF(20, 20, 24, 24));
}

void drawDocument(QPainter& painter) {
    constexpr qreal kFold = 14;
    QPainterPath page(QPointF(13, 5));
    page.lineTo(51 - kFold, 5);
    page.lineTo(51, 5 + kFold);
    page.lineTo(51, 59);
    page.lineTo(13, 59);
    page.closeSubpath();
    painter.setBrush(shading(QColor(0xf4, 0xf5, 0xf7), kLight));
    painter.drawPath(page);
    painter.setBrush(kMiddle);
    painter.drawPolygon(
        QPolygonF({QPointF(51 - kFold, 5), QPointF(51 - kFold, 5 + kFold), QPointF(51, 5 + kFold)}));
}

void drawFolder(QPainter& painter) {
    QPainterPath back;
    back.addRoundedRect(QRectF(5, 13, 26, 20), 4, 4);
    back.addRoundedRect(QRectF(5, 18, 54, 36), 4, 4);
    painter.setBrush(kDark);
    painter.drawPath(back.simplified());
    painter.setBrush(shading(kLight, kMiddle));
    painter.drawRoundedRect(QRectF(5, 24, 54, 30), 4, 4);
}

// The checksum of PNG's chunks.
std::uint32_t crc32(std::string_view bytes) {
    static constexpr auto kTable = [] {
        std::array<std::uint32_t, 256> table{};
        for (std::uint32_t i = 0; i < table.size(); ++i) {
            std::uint32_t value = i;
            for (int bit = 0; bit < 8; ++bit) {
                value = (value & 1U) != 0 ? 0xEDB88320U ^ (value >> 1U) : value >> 1U;
            }
            table[i] = value;
        }
        return table;
    }();
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char c : bytes) {
        crc = kTable[(crc ^ static_cast<unsigned char>(c)) & 0xFFU] ^ (crc >> 8U);
    }
    return ~crc;
}

std::uint32_t bigEndian(std::string_view fourBytes) {
    std::uint32_t value = 0;
    for (const char c : fourBytes) {
        value = value << 8U | static_cast<unsigned char>(c);
    }
    return value;
}

// A signature and whole chunks with their right checksums, up to the end chunk. The decoder writes to the
// standard error when it meets anything else, and what never reaches it can't harm it.
bool isIntactPng(std::string_view bytes) {
    constexpr std::string_view kSignature = "\x89PNG\r\n\x1A\n";
    constexpr std::size_t kFrame = 12; // of a chunk: length, type, checksum
    if (!bytes.starts_with(kSignature)) {
        return false;
    }
    bytes.remove_prefix(kSignature.size());
    while (bytes.size() >= kFrame) {
        const std::size_t length = bigEndian(bytes.substr(0, 4));
        if (length > bytes.size() - kFrame ||
            crc32(bytes.substr(4, 4 + length)) != bigEndian(bytes.substr(8 + length, 4))) {
            return false;
        }
        if (bytes.substr(4, 4) == "IEND") {
            return true;
        }
        bytes.remove_prefix(kFrame + length);
    }
    return false;
}

} // namespace

IconImage fromImage(const QImage& image) {
    const QImage converted = image.convertToFormat(QImage::Format_RGBA8888);
    IconImage icon{converted.width(), converted.height(), {}};
    const auto rowBytes = static_cast<std::size_t>(converted.width()) * 4;
    icon.rgba.resize(rowBytes * static_cast<std::size_t>(converted.height()));
    for (int row = 0; row < converted.height(); ++row) { // rows of a QImage may be padded
        std::memcpy(icon.rgba.data() + rowBytes * static_cast<std::size_t>(row), converted.constScanLine(row),
                    rowBytes);
    }
    return icon;
}

std::optional<IconImage> decoded(std::string_view bytes, const char* form) {
    if (form == std::string_view("png") && !isIntactPng(bytes)) {
        return std::nullopt;
    }
    QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, form);
    reader.setAutoDetectImageFormat(false); // no other reader gets the bytes
    const QSize size = reader.size();       // from the head, before anything is laid out
    if (size.isEmpty() || size.width() > kMostSide || size.height() > kMostSide) {
        return std::nullopt;
    }
    const QImage image = reader.read();
    if (image.isNull()) {
        return std::nullopt;
    }
    return fromImage(image);
}

IconImage drawn(Generic generic, int side) {
    side = std::clamp(side, kLeastSide, kMostSide);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / kCanvas, side / kCanvas);
    painter.setPen(QPen(kOutline, 1.5));
    switch (generic) {
    case Generic::application:
        drawApplication(painter);
        break;
    case Generic::document:
        drawDocument(painter);
        break;
    case Generic::folder:
        drawFolder(painter);
        break;
    }
    painter.end();
    return fromImage(image);
}

} // namespace quillane::Pictures
