#include "PanelIcon.h"
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <QtEndian>
#include <algorithm>
#include <array>

// Outside the namespace, as the macro demands. Without it the linker drops the resources of a static library.
static void loadItem() {
    Q_INIT_RESOURCE(item);
}

namespace quillane::PanelIcon {
namespace {

constexpr std::array kSides = {22, 44}; // of a panel's icon, and on a display of twice the density
constexpr auto kColor = "#5C7AEB";      // 3.9:1 on white, 3.5:1 on a panel of #2D2D2D
const auto kThemeName = QStringLiteral("org.quillane.Quillane-symbolic");

bool desktopRecolors() {
    constexpr std::array kDesktops = {"XFCE", "MATE", "GNOME", "KDE"};
    const auto here = qgetenv("XDG_CURRENT_DESKTOP").split(':');
    return std::ranges::any_of(kDesktops, [&](const char* desktop) { return here.contains(desktop); });
}

// The panel draws it, so what counts is that it lies where the program is installed with it, and not what Qt can draw.
bool isInThemes() {
    const auto folders = QIcon::themeSearchPaths();
    return std::ranges::any_of(folders, [](const QString& folder) {
        return QFile::exists(folder + QStringLiteral("/hicolor/symbolic/apps/") + kThemeName +
                             QStringLiteral(".svg"));
    });
}

QByteArray drawing() {
    static const bool isLoaded = (loadItem(), true);
    Q_UNUSED(isLoaded);
    QFile file(QStringLiteral(":/item/sparkles.svg"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().replace("currentColor", kColor) : QByteArray();
}

QImage image(int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(drawing()).render(&painter);
    return image;
}

NotifierPixmap pixmapOf(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    NotifierPixmap pixmap{plain.width(), plain.height(), {}};
    pixmap.bytes.resize(plain.sizeInBytes());
    qToBigEndian<quint32>(plain.constBits(), plain.sizeInBytes() / qsizetype{sizeof(quint32)},
                          pixmap.bytes.data());
    return pixmap;
}

} // namespace

QString themeName() {
    return desktopRecolors() && isInThemes() ? kThemeName : QString();
}

NotifierPixmaps pixmaps() {
    NotifierPixmaps pixmaps;
    for (const int side : kSides) {
        pixmaps.append(pixmapOf(image(side)));
    }
    return pixmaps;
}

QIcon icon() {
    QIcon icon;
    for (const int side : kSides) {
        icon.addPixmap(QPixmap::fromImage(image(side)));
    }
    return icon;
}

} // namespace quillane::PanelIcon
