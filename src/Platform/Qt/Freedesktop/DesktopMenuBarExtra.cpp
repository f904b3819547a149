#include "DesktopMenuBarExtra.h"
#include "EmbeddedTrayItem.h"
#include "PanelPlace.h"
#include "StatusNotifierItem.h"
#include "StatusNotifierRegistration.h"
#include <utility>

namespace quillane {
namespace {

using State = StatusNotifierRegistration::State;

// By a job: whoever is connecting meanwhile keeps all others from it for as long as the bus takes.
void closeLater(TaskRunner& tasks, const QString& name) {
    tasks.run(Priority::utility, [name] { QDBusConnection::disconnectFromBus(name); });
}

} // namespace

struct DesktopMenuBarExtra::BusItem {
    BusItem(TaskRunner& tasks, const QDBusConnection& bus, StatusNotifierItem::Handlers handlers)
        : connection{tasks, bus.name()}
        , item(bus, std::move(handlers))
        , registration(bus, QString::fromLatin1(StatusNotifierItem::kPath)) {}

    struct Connection {
        TaskRunner& tasks;
        QString name;
        ~Connection() { closeLater(tasks, name); }
    };
    Connection connection; // goes last
    StatusNotifierItem item;
    StatusNotifierRegistration registration;
};

DesktopMenuBarExtra::DesktopMenuBarExtra(TaskRunner& tasks, SessionBus bus)
    : m_tasks(tasks)
    , m_bus(std::move(bus)) {}

DesktopMenuBarExtra::~DesktopMenuBarExtra() {
    withdraw();
}

void DesktopMenuBarExtra::insert() {
    if (!std::exchange(m_isInserted, true)) {
        reach();
    }
}

void DesktopMenuBarExtra::withdraw() {
    if (!std::exchange(m_isInserted, false)) {
        return;
    }
    ++m_insertions;
    m_tray.reset();
    m_item.reset();
    tellOfChange();
}

bool DesktopMenuBarExtra::isShown() const {
    return m_isInserted &&
           ((m_item && m_item->registration.state() == State::taken) || (m_tray && m_tray->isShown()));
}

void DesktopMenuBarExtra::setFigure(const std::string& figure) {
    m_figure = QString::fromStdString(figure);
    if (m_item) {
        m_item->item.setFigure(m_figure);
    }
    if (m_tray) {
        m_tray->setTitle(StatusNotifierItem::titleWith(m_figure));
    }
}

void DesktopMenuBarExtra::setMenu(const std::vector<Entry>& menu) {
    m_menu = menu;
    if (m_item) {
        m_item->item.setMenu(m_menu);
    }
    if (m_tray) {
        m_tray->setMenu(m_menu);
    }
}

void DesktopMenuBarExtra::setHandlers(Handlers handlers) {
    m_handlers = std::move(handlers);
}

void DesktopMenuBarExtra::reach() {
    m_tasks.run(Priority::utility,
                [&tasks = m_tasks, bus = m_bus, insertion = ++m_insertions, self = std::weak_ptr(m_self)] {
                    const QDBusConnection own = bus();
                    if (!own.isConnected()) {
                        sharedSessionBus(); // a tray's item asks for it, on the main thread
                    }
                    tasks.post([&tasks, connection = own, insertion, self] {
                        const auto extra = self.lock();
                        if (extra && (*extra)->m_isInserted && (*extra)->m_insertions == insertion) {
                            (*extra)->meet(connection);
                        } else {
                            closeLater(tasks, connection.name());
                        }
                    });
                });
}

void DesktopMenuBarExtra::meet(const QDBusConnection& bus) {
    if (bus.isConnected()) {
        m_item = std::make_unique<BusItem>(
            m_tasks, bus,
            StatusNotifierItem::Handlers{.pressed =
                                             [this](QPoint told, const QString& token) {
                                                 press(PanelPlace::placeOf(told), token.toStdString());
                                             },
                                         .chosen =
                                             [this](int id, const QString& token) {
                                                 choose({.id = id, .activationToken = token.toStdString()});
                                             }});
        m_item->item.setFigure(m_figure);
        m_item->item.setMenu(m_menu);
        auto* const registration = &m_item->registration;
        QObject::connect(registration, &StatusNotifierRegistration::changed, registration,
                         [this] { follow(m_item->registration.state()); });
    } else {
        follow(State::absent);
    }
}

// While it is not known whether the bus will show the item, what stands in a tray stays there.
void DesktopMenuBarExtra::follow(State state) {
    if (state == State::taken) {
        m_tray.reset();
    } else if (state == State::absent && !m_tray) {
        embed();
    }
    tellOfChange();
}

void DesktopMenuBarExtra::embed() {
    m_tray = std::make_unique<EmbeddedTrayItem>(
        StatusNotifierItem::titleWith(m_figure),
        EmbeddedTrayItem::Handlers{.shownChanged = [this] { tellOfChange(); },
                                   .pressed = [this](QPoint place) { press(place, {}); },
                                   .chosen = [this](int id) { choose({.id = id, .activationToken = {}}); }});
    m_tray->setMenu(m_menu);
}

void DesktopMenuBarExtra::press(std::optional<QPoint> place, const std::string& token) {
    Press press{.place = {}, .activationToken = token};
    if (place) {
        press.place = Place{.x = place->x(), .y = place->y()};
    }
    later([press](DesktopMenuBarExtra& extra) {
        if (const auto pressed = extra.m_handlers.pressed; pressed && extra.m_isInserted) {
            pressed(press);
        }
    });
}

void DesktopMenuBarExtra::choose(const Choice& choice) {
    later([choice](DesktopMenuBarExtra& extra) {
        if (const auto chosen = extra.m_handlers.chosen; chosen && extra.m_isInserted) {
            chosen(choice);
        }
    });
}

void DesktopMenuBarExtra::tellOfChange() {
    const bool isNow = isShown();
    if (std::exchange(m_wasShown, isNow) == isNow) {
        return;
    }
    later([](DesktopMenuBarExtra& extra) {
        if (const auto changed = extra.m_handlers.shownChanged) { // a handler may set others
            changed();
        }
    });
}

template <class Tell>
void DesktopMenuBarExtra::later(Tell tell) {
    m_tasks.post([tell = std::move(tell), self = std::weak_ptr(m_self)] {
        if (const auto extra = self.lock()) {
            tell(**extra);
        }
    });
}

} // namespace quillane
