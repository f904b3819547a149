#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include <QDir>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <cmath>

// Outside the namespace, as the macro demands. Without it the linker drops the resources of a static library.
static void loadSymbols() {
    Q_INIT_RESOURCE(symbols);
}

namespace quillane {

namespace {

constexpr double kDisabledShare = 0.45;

QString pathOf(const QString& name) {
    static const bool loaded = (loadSymbols(), true);
    Q_UNUSED(loaded);
    return QStringLiteral(":/symbols/%1.svg").arg(name);
}

bool keepsItsColours(const QString& name) {
    return name == QLatin1String("BrandMark") || name == QLatin1String("AppIcon");
}

QImage render(const QString& name, int pixels, const QColor& color) {
    if (!Symbols::exists(name)) {
        return {};
    }
    QSvgRenderer renderer(pathOf(name));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    if (!keepsItsColours(name)) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
    }
    return image;
}

class SymbolEngine : public QIconEngine {
  public:
    SymbolEngine(QString name, Tint tint)
        : m_name(std::move(name))
        , m_tint(tint) {}

    QIconEngine* clone() const override { return new SymbolEngine(m_name, m_tint); }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const int side = qMin(rect.width(), rect.height());
        const QPointF corner = QRectF(rect).center() - QPointF(side / 2.0, side / 2.0);
        Symbols::draw(*painter, corner, side, m_name, color(mode));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1);
    }

    // `size` is in device pixels already.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
        return Symbols::pixmap(m_name, qMin(size.width(), size.height()), color(mode), 1);
    }

    bool isNull() override { return !Symbols::exists(m_name); }

  private:
    QColor color(QIcon::Mode mode) const {
        const Tokens& tokens = Tokens::current();
        const QColor own = tokens.tint(m_tint);
        if (mode == QIcon::Disabled) {
            // A disabled filled button loses its colour, on which alone white can be seen.
            return m_tint == Tint::White ? tokens.text3 : faded(own, kDisabledShare);
        }
        return mode == QIcon::Selected ? QColor(Qt::white) : own;
    }

    QString m_name;
    Tint m_tint;
};

} // namespace

QPixmap Symbols::pixmap(const QString& name, double side, const QColor& color, double devicePixelRatio) {
    const int pixels = static_cast<int>(std::lround(side * devicePixelRatio));
    if (pixels <= 0) {
        return {};
    }
    const QString key = QStringLiteral("symbol:%1:%2:%3:%4")
                            .arg(name)
                            .arg(pixels)
                            .arg(color.rgba(), 8, 16)
                            .arg(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) {
        return pixmap;
    }
    pixmap = QPixmap::fromImage(render(name, pixels, color));
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

void Symbols::draw(QPainter& painter, QPointF topLeft, double side, const QString& name,
                   const QColor& color) {
    // Not the ratio of the painter's device: a widget that is rendered into an image has its own still.
    const QTransform transform = painter.deviceTransform();
    const double ratio = std::hypot(transform.m11(), transform.m12());
    painter.drawPixmap(topLeft, pixmap(name, side, color, ratio > 0 ? ratio : 1));
}

QIcon Symbols::icon(const QString& name, Tint tint) {
    return name.isEmpty() ? QIcon() : QIcon(new SymbolEngine(name, tint));
}

bool Symbols::exists(const QString& name) {
    return !name.isEmpty() && QFile::exists(pathOf(name));
}

QStringList Symbols::names() {
    QStringList names =
        QDir(QFileInfo(pathOf(QStringLiteral("any"))).path()).entryList({QStringLiteral("*.svg")});
    for (QString& name : names) {
        name.chop(4);
    }
    return names;
}

} // namespace quillane
