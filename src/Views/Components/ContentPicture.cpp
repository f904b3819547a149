#include "Components/ContentPicture.h"
#include <QWidget>

namespace quillane {

QPixmap contentPicture(QWidget& widget) {
    const double ratio = widget.devicePixelRatioF();
    QPixmap picture(widget.size() * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    widget.render(&picture, {}, {}, QWidget::DrawChildren);
    return picture;
}

} // namespace quillane
