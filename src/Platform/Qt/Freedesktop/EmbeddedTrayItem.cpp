#include "EmbeddedTrayItem.h"
#include "PanelIcon.h"
#include <QAction>
#include <QCursor>
#include <QMenu>
#include <QSystemTrayIcon>
#include <utility>

namespace quillane {

EmbeddedTrayItem::EmbeddedTrayItem(QString title, Handlers handlers)
    : m_title(std::move(title))
    , m_handlers(std::move(handlers))
    , m_menu(std::make_unique<QMenu>()) {
    follow();
}

EmbeddedTrayItem::~EmbeddedTrayItem() = default;

void EmbeddedTrayItem::setTitle(const QString& title) {
    m_title = title;
    if (m_icon) {
        m_icon->setToolTip(title);
    }
}

void EmbeddedTrayItem::setMenu(const std::vector<MenuBarExtra::Entry>& entries) {
    m_menu->clear();
    for (const auto& entry : entries) {
        if (entry.words.empty()) {
            m_menu->addSeparator();
            continue;
        }
        const auto words = QString::fromStdString(entry.words);
        auto* const action =
            m_menu->addAction(QString(words).replace(QLatin1Char('&'), QStringLiteral("&&")));
        action->setEnabled(entry.isEnabled);
        QObject::connect(action, &QAction::triggered, m_menu.get(),
                         [this, id = entry.id] { m_handlers.chosen(id); });
    }
    attachMenu();
}

void EmbeddedTrayItem::attachMenu() {
    if (m_icon) {
        m_icon->setContextMenu(m_menu->isEmpty() ? nullptr : m_menu.get());
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
    QObject::connect(m_icon.get(), &QSystemTrayIcon::activated, m_icon.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Context && !m_menu->isEmpty()) {
                             return; // it opens the menu
                         }
                         const QRect place = m_icon->geometry();
                         m_handlers.pressed(place.isEmpty() ? QCursor::pos() : place.center());
                     });
    attachMenu();
    m_icon->show();
}

} // namespace quillane
