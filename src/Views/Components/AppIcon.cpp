#include "Components/AppIcon.h"
#include "Components/LibraryObserver.h"
#include "IconCache.h"
#include <QPainter>

namespace quillane {

AppIcon::AppIcon(int side, QWidget* parent)
    : QWidget(parent)
    , m_pixmaps(side)
    , m_arrivals(new LibraryObserver(
          [this] {
              IconCache::shared().latestArrival.get();
              update();
          },
          this)) {
    setFixedSize(side, side);
    m_arrivals->renderNow();
}

void AppIcon::setURL(const FileURL& url) {
    if (m_url == url) {
        return;
    }
    m_url = url;
    m_pixmaps.clear();
    update();
}

void AppIcon::paintEvent(QPaintEvent*) {
    if (!m_url) {
        return;
    }
    QPainter painter(this);
    const QPixmap icon = m_pixmaps.at(*m_url, devicePixelRatioF());
    if (!icon.isNull()) {
        painter.drawPixmap(0, 0, icon);
    }
}

} // namespace quillane
