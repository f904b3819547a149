// Draws the pictures that the bundle of the Mac carries: the program's icon in all its sizes, and what stands in the
// menu bar, of which the system takes the opacity alone.
// Usage: quillane-mac-icons ICON.svg ITEM.svg FOLDER
#include "IcnsWriter.h"
#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstring>
#include <iostream>
#include <stdexcept>

using namespace quillane;

namespace {

constexpr int kItemPoints = 16; // the menu bar has room for 18

class Drawing {
  public:
    explicit Drawing(const QString& file)
        : m_renderer(file) {
        if (!m_renderer.isValid()) {
            throw std::runtime_error(file.toStdString() + " is no drawing");
        }
    }

    QImage drawn(int side) {
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        m_renderer.render(&painter);
        painter.end();
        return image.convertToFormat(QImage::Format_RGBA8888);
    }

  private:
    QSvgRenderer m_renderer;
};

IconImage pixelsOf(const QImage& image) {
    IconImage icon{image.width(), image.height(), {}};
    for (int row = 0; row < image.height(); ++row) {
        const uchar* line = image.constScanLine(row);
        icon.rgba.insert(icon.rgba.end(), line, line + qsizetype{image.width()} * 4);
    }
    return icon;
}

QByteArray pngOf(const QImage& image) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        throw std::runtime_error("a picture could not be made");
    }
    return buffer.data();
}

std::string iconOf(Drawing& drawing) {
    IcnsWriter::Container container;
    for (const auto size : IcnsWriter::sizes()) {
        const auto image = drawing.drawn(size.side());
        if (IcnsWriter::Container::isKeptAsPixels(size)) {
            container.addPixels(size, pixelsOf(image));
        } else {
            const auto png = pngOf(image);
            container.addPng(size, {png.constData(), static_cast<std::size_t>(png.size())});
        }
    }
    return container.bytes();
}

void write(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        throw std::runtime_error(name.toStdString() + ": " + file.errorString().toStdString());
    }
}

void drawAll(const QString& icon, const QString& item, const QDir& folder) {
    Drawing program(icon);
    write(folder.filePath("Quillane.icns"), QByteArray::fromStdString(iconOf(program)));
    Drawing menuBar(item);
    write(folder.filePath("MenuBarIconTemplate.png"), pngOf(menuBar.drawn(kItemPoints)));
    write(folder.filePath("MenuBarIconTemplate@2x.png"), pngOf(menuBar.drawn(2 * kItemPoints)));
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        std::cerr << "usage: quillane-mac-icons ICON.svg ITEM.svg FOLDER\n";
        return 2;
    }
    try {
        drawAll(arguments[1], arguments[2], QDir(arguments[3]));
    } catch (const std::exception& error) {
        std::cerr << "quillane-mac-icons: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
