#include "Components/PermanentBadge.h"
#include <QRectF>
#include <cmath>

namespace quillane {

namespace {
QString word() {
    return QStringLiteral("PERMANENT");
}
} // namespace

PermanentBadge::PermanentBadge(QWidget* parent)
    : Badge(word(), {}, Tint::Red, Kind::Permanent, parent) {}

void PermanentBadge::draw(QPainter& painter, double left, double middle) {
    const QSizeF size = sizeOf(word(), {}, Kind::Permanent);
    const QRectF place(QPointF(left, std::round(middle - size.height() / 2)), size);
    Badge::draw(painter, place, word(), {}, Tint::Red, Kind::Permanent);
}

} // namespace quillane
