#pragma once
#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QPdfWriter>
#include <QtEndian>
#include <string>

// Files with pictures in them, as bytes.
namespace quillane::PictureFiles {

// Each pixel its own colour, so that nothing compresses to nothing.
inline QImage colourful(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.setPixel(x, y, qRgb(x * 7 % 256, y * 5 % 256, (x * y) % 256));
        }
    }
    return image;
}

inline std::string encoded(const QImage& image, const char* form, bool isProgressive = false) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, form);
    writer.setProgressiveScanWrite(isProgressive);
    writer.write(image);
    return bytes.toStdString();
}

// Pages of 100 by 200 points, each with a square in it.
inline std::string pdf(int pages) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(QSizeF(100, 200), QPageSize::Point));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    for (int page = 0; page < pages; ++page) {
        if (page > 0) {
            writer.newPage();
        }
        painter.fillRect(0, 0, writer.width() / 2, writer.height() / (page + 2), Qt::red);
    }
    painter.end();
    return bytes.toStdString();
}

// A PNG that says it is as large as that and ends where its pixels would begin.
inline std::string pngClaiming(quint32 width, quint32 height) {
    auto bytes = encoded(colourful(1, 1), "png");
    qToBigEndian(width, &bytes[16]);
    qToBigEndian(height, &bytes[20]);
    quint32 crc = 0xFFFFFFFFU;
    for (std::size_t i = 12; i < 29; ++i) {
        crc ^= static_cast<unsigned char>(bytes[i]);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1U) != 0 ? 0xEDB88320U ^ (crc >> 1U) : crc >> 1U;
        }
    }
    qToBigEndian(~crc, &bytes[29]);
    return bytes;
}

} // namespace quillane::PictureFiles
