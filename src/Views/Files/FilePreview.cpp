#include "Files/FilePreview.h"
#include "Components/FileKindSymbol.h"
#include "Components/FocusRing.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include "Workspace.h"
#include <QPainter>
#include <QPainterPath>

namespace quillane {

namespace {

constexpr double kRadius = 12;
constexpr double kSymbolSide = 56;

QImage copyOf(const IconImage& image) {
    return QImage(image.rgba.data(), image.width, image.height, qsizetype{4} * image.width,
                  QImage::Format_RGBA8888)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

FilePreview::FilePreview(QWidget* parent)
    : QPushButton(parent) {
    setAccessibleName(QStringLiteral("Quick Look"));
    setToolTip(QStringLiteral("Quick Look"));
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setProperty("drawsFocusRing", true); // within the picture's round corners
}

void FilePreview::setKind(UserFile::Kind kind) {
    m_symbol = fileKindSymbol(kind);
    update();
}

void FilePreview::setPicture(const std::shared_ptr<const IconImage>& picture) {
    m_picture = picture && !picture->isEmpty() ? copyOf(*picture) : QImage();
    update();
}

QSize FilePreview::sizeHint() const {
    return {kHeight, kHeight};
}

QSize FilePreview::minimumSizeHint() const {
    return {0, kHeight};
}

// Fills the button; what is too much of one side is cut off evenly at both ends.
void FilePreview::drawPicture(QPainter& painter) const {
    const QSizeF filled = QSizeF(m_picture.size()).scaled(size(), Qt::KeepAspectRatioByExpanding);
    QRectF target(QPointF(), filled);
    target.moveCenter(QRectF(rect()).center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, m_picture);
}

void FilePreview::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF edge = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath ground;
    ground.addRoundedRect(edge, kRadius, kRadius);
    painter.fillPath(ground, tokens.card);
    if (hasPicture()) {
        painter.save();
        painter.setClipPath(ground);
        drawPicture(painter);
        painter.restore();
    } else {
        Symbols::draw(painter, edge.center() - QPointF(kSymbolSide / 2, kSymbolSide / 2), kSymbolSide,
                      m_symbol, tokens.text3);
    }
    painter.strokePath(ground, QPen(tokens.line, 1));
    if (hasFocus() && FocusRing::isShownFor(this)) {
        FocusRing::drawInside(painter, edge, kRadius, 3);
    }
}

} // namespace quillane
