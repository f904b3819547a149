#include "Preview/PictureView.h"
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <utility>

namespace quillane {

PictureView::PictureView(QWidget* parent)
    : QWidget(parent) {}

void PictureView::setPicture(std::shared_ptr<const IconImage> picture, const QString& name) {
    m_picture = picture && !picture->isEmpty() ? std::move(picture) : nullptr;
    m_scaled = {};
    setAccessibleName(name);
    update();
}

QRectF PictureView::place() const {
    if (!m_picture) {
        return {};
    }
    const double ratio = devicePixelRatioF();
    const QSizeF whole(m_picture->width / ratio, m_picture->height / ratio);
    const double scale = std::min({width() / whole.width(), height() / whole.height(), kMostEnlarged});
    QRectF place(QPointF(), whole * scale);
    place.moveCenter(QRectF(rect()).center());
    return place;
}

void PictureView::paintEvent(QPaintEvent*) {
    const QRectF area = place();
    const QSize pixels = (area.size() * devicePixelRatioF()).toSize();
    if (!m_picture || pixels.isEmpty()) {
        return;
    }
    if (m_scaled.size() != pixels) {
        const QImage whole(m_picture->rgba.data(), m_picture->width, m_picture->height,
                           qsizetype{4} * m_picture->width, QImage::Format_RGBA8888);
        m_scaled = QPixmap::fromImage(whole.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    QPainter(this).drawPixmap(area, m_scaled, QRectF(m_scaled.rect()));
}

} // namespace quillane
