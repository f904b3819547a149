#include "StatusNotifierItem.h"
#include "PanelIcon.h"
#include <utility>

namespace quillane {

StatusNotifierItem::StatusNotifierItem(QDBusConnection bus, Handlers handlers)
    : m_bus(std::move(bus))
    , m_handlers(std::move(handlers))
    , m_menu(m_bus, [this](int id) { m_handlers.chosen(id, std::exchange(m_token, QString())); })
    , m_iconName(PanelIcon::themeName())
    , m_pixmaps(PanelIcon::pixmaps()) {
    registerNotifierTypes();
    m_bus.registerObject(QString::fromLatin1(kPath), this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                             QDBusConnection::ExportAllProperties);
}

StatusNotifierItem::~StatusNotifierItem() {
    m_bus.unregisterObject(QString::fromLatin1(kPath));
}

QString StatusNotifierItem::titleWith(const QString& figure) {
    const auto name = QStringLiteral("Quillane");
    return figure.isEmpty() ? name : name + QStringLiteral(", ") + figure;
}

void StatusNotifierItem::setFigure(const QString& figure) {
    if (figure == m_figure) {
        return;
    }
    m_figure = figure;
    emit NewTitle();
    emit NewToolTip();
    emit XAyatanaNewLabel(m_figure, QString());
}

void StatusNotifierItem::setMenu(const StatusNotifierMenu::Entries& entries) {
    const bool wasEmpty = m_menu.isEmpty();
    m_menu.setEntries(entries);
    if (wasEmpty != m_menu.isEmpty()) {
        emit NewMenu();
    }
}

void StatusNotifierItem::ProvideXdgActivationToken(const QString& token) {
    m_token = token.size() <= kLongestToken ? token : QString();
}

void StatusNotifierItem::Scroll(int /*delta*/, const QString& /*orientation*/) {}

void StatusNotifierItem::press(int x, int y) {
    m_handlers.pressed(QPoint(x, y), std::exchange(m_token, QString()));
}

// Panels that look for a menu know a word for none.
QDBusObjectPath StatusNotifierItem::menu() const {
    return QDBusObjectPath(m_menu.isEmpty() ? QStringLiteral("/NO_DBUSMENU")
                                            : QString::fromLatin1(StatusNotifierMenu::kPath));
}

} // namespace quillane
