#pragma once
#include "MenuBarExtra.h"
#include "SessionBus.h"
#include "StatusNotifierRegistration.h"
#include "TaskRunner.h"
#include <QPoint>
#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

class EmbeddedTrayItem;

// The item in the panel of a freedesktop desktop: one that panels find on the bus, on a connection of its own, as it is
// the end of a connection that takes an item away; or, where nobody on the bus shows items, a window in a tray of X11.
// Nothing waits: the bus is reached by a job and asked without blocking, and at rest nothing happens here.
//
// A panel that draws nothing beside an icon tells the figure under the pointer and to assistive tools. Main thread only;
// `tasks` must outlive it.
class DesktopMenuBarExtra final : public MenuBarExtra {
  public:
    // `bus` gives a new connection each time, which is closed here.
    explicit DesktopMenuBarExtra(TaskRunner& tasks, SessionBus bus = ownSessionBus);
    ~DesktopMenuBarExtra() override;
    DesktopMenuBarExtra(const DesktopMenuBarExtra&) = delete;
    DesktopMenuBarExtra& operator=(const DesktopMenuBarExtra&) = delete;

    void insert() override;
    void withdraw() override;
    bool isShown() const override;
    void setFigure(const std::string& figure) override;
    void setMenu(const std::vector<Entry>& menu) override;
    void setHandlers(Handlers handlers) override;

  private:
    struct BusItem;

    void reach();
    void meet(const QDBusConnection& bus);
    void follow(StatusNotifierRegistration::State state);
    void embed();
    void press(std::optional<QPoint> place, const std::string& token);
    void choose(const Choice& choice);
    void tellOfChange();
    template <class Tell>
    void later(Tell tell);

    TaskRunner& m_tasks;
    SessionBus m_bus;
    Handlers m_handlers;
    QString m_figure;
    std::vector<Entry> m_menu;
    bool m_isInserted = false;
    bool m_wasShown = false;   // when it was looked at last
    unsigned m_insertions = 0; // a bus that is reached for an earlier one comes too late
    std::unique_ptr<BusItem> m_item;
    std::unique_ptr<EmbeddedTrayItem> m_tray; // while nobody on the bus shows items
    // Jobs hold it weakly and look at it on the main thread, where this is destroyed.
    std::shared_ptr<DesktopMenuBarExtra*> m_self = std::make_shared<DesktopMenuBarExtra*>(this);
};

} // namespace quillane
