#include "MacMenuBarExtra.h"
#include <utility>

namespace quillane {

MacMenuBarExtra::MacMenuBarExtra(TaskRunner& tasks, MakeItem makeItem)
    : m_tasks(tasks)
    , m_makeItem(std::move(makeItem)) {}

MacMenuBarExtra::~MacMenuBarExtra() = default;

void MacMenuBarExtra::insert() {
    if (m_item) {
        return;
    }
    m_item = m_makeItem(ears());
    m_item->setFigure(m_figure);
    m_item->setMenu(m_menu);
    tellOfChange();
}

void MacMenuBarExtra::withdraw() {
    m_item.reset();
    tellOfChange();
}

bool MacMenuBarExtra::isShown() const {
    return m_item && m_item->isShown();
}

void MacMenuBarExtra::setFigure(const std::string& figure) {
    m_figure = figure;
    if (m_item) {
        m_item->setFigure(m_figure);
    }
}

void MacMenuBarExtra::setMenu(const std::vector<Entry>& menu) {
    m_menu = menu;
    if (m_item) {
        m_item->setMenu(m_menu);
    }
}

void MacMenuBarExtra::setHandlers(Handlers handlers) {
    m_handlers = std::move(handlers);
}

StatusItem::Handlers MacMenuBarExtra::ears() {
    return {.pressed = [this](std::optional<Place> place) { press({.place = place, .activationToken = {}}); },
            .chosen = [this](int id) { choose(id); },
            .shownChanged = [this] { tellOfChange(); }};
}

void MacMenuBarExtra::press(const Press& press) {
    later([press](MacMenuBarExtra& extra) {
        if (const auto pressed = extra.m_handlers.pressed; pressed && extra.m_item) {
            pressed(press);
        }
    });
}

void MacMenuBarExtra::choose(int id) {
    later([id](MacMenuBarExtra& extra) {
        if (const auto chosen = extra.m_handlers.chosen; chosen && extra.m_item) {
            chosen({.id = id, .activationToken = {}});
        }
    });
}

void MacMenuBarExtra::tellOfChange() {
    const bool isNow = isShown();
    if (std::exchange(m_wasShown, isNow) == isNow) {
        return;
    }
    later([](MacMenuBarExtra& extra) {
        if (const auto changed = extra.m_handlers.shownChanged) { // a handler may set others
            changed();
        }
    });
}

template <class Tell>
void MacMenuBarExtra::later(Tell tell) {
    m_tasks.post([tell = std::move(tell), self = std::weak_ptr(m_self)] {
        if (const auto extra = self.lock()) {
            tell(**extra);
        }
    });
}

} // namespace quillane
