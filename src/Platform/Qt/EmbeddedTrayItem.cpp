#include "EmbeddedTrayItem.h"
#include "PanelIcon.h"
#include <QCursor>
#include <QSystemTrayIcon>
#include <utility>

namespace quillane {

EmbeddedTrayItem::EmbeddedTrayItem(QString title, Handlers handlers)
    : m_title(std::move(title))
    , m_handlers(std::move(handlers)) {
    follow();
}

EmbeddedTrayItem::~EmbeddedTrayItem() = default;

void EmbeddedTrayItem::setTitle(const QString& title) {
    m_title = title;
    if (m_icon) {
        m_icon->setToolTip(title);
    }
}

void EmbeddedTrayItem::follow() {
    if (m_owner.isThere() == isShown()) {
        return;
    }
    if (isShown()) {
        m_icon.reset();
        return;
    }
    m_icon = std::make_unique<QSystemTrayIcon>(PanelIcon::icon());
    m_icon->setToolTip(m_title);
    QObject::connect(m_icon.get(), &QSystemTrayIcon::activated, m_icon.get(), [this] {
        const QRect place = m_icon->geometry();
        m_handlers.pressed(place.isEmpty() ? QCursor::pos() : place.center());
    });
    m_icon->show();
}

} // namespace quillane
