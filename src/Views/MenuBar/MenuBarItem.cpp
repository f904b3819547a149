#include "MenuBar/MenuBarItem.h"
#include "AppLibrary.h"
#include "Components/LibraryObserver.h"
#include "DefaultsKeys.h"
#include "Formatting.h"
#include "MenuBar/MenuBarPopover.h"
#include "MenuBar/MenuBarView.h"
#include "NotificationCenter.h"
#include <algorithm>
#include <utility>

namespace quillane {

MenuBarItem::MenuBarItem(AppLibrary& library, NotificationCenter& notifications, Scenes& scenes,
                         std::function<void()> quit)
    : m_library(library)
    , m_notifications(notifications)
    , m_scenes(scenes)
    , m_quit(std::move(quit))
    , m_extra(library.platform().menuBarExtra)
    , m_observer(new LibraryObserver([this] { render(); }, this)) {
    m_extra.setHandlers({.pressed = [this](const MenuBarExtra::Press& pressed) { press(pressed); },
                         .chosen = [this](const MenuBarExtra::Choice& choice) { choose(choice); },
                         .shownChanged = [this] { noticeShown(); }});
    m_subscription = library.platform().defaults.subscribe([this](const std::string& key) {
        if (key == DefaultsKeys::kShowMenuBarExtra) {
            followSetting();
        }
    });
    followSetting();
}

MenuBarItem::~MenuBarItem() {
    m_library.platform().defaults.unsubscribe(m_subscription);
    m_extra.setHandlers({});
    m_extra.withdraw();
    delete m_popover;
}

MenuBarPopover* MenuBarItem::popover() const {
    return m_popover;
}

void MenuBarItem::closePopover() {
    if (m_popover) {
        m_popover->close();
    }
}

std::string MenuBarItem::figure(Bytes reclaimable) {
    return reclaimable >= 1 ? Formatting::byteCountInMegabytesOrGigabytes(reclaimable) : std::string();
}

void MenuBarItem::followSetting() {
    const bool isWanted = m_library.platform().defaults.boolean(DefaultsKeys::kShowMenuBarExtra);
    if (isWanted == m_isInserted) {
        return;
    }
    m_isInserted = isWanted;
    m_observer->renderNow();
    if (isWanted) {
        m_extra.insert();
    } else {
        m_extra.withdraw();
        closePopover();
    }
    emit standingChanged();
}

std::vector<MenuBarExtra::Entry> MenuBarItem::menu(Bytes reclaimable) {
    const auto entry = [reclaimable](MenuBarWay way) {
        return MenuBarExtra::Entry{
            .id = static_cast<int>(way), .words = words(way), .isEnabled = isOpen(way, reclaimable)};
    };
    const MenuBarExtra::Entry rule;
    return {entry(MenuBarWay::window), entry(MenuBarWay::review), rule, entry(MenuBarWay::settings),
            entry(MenuBarWay::quit)};
}

// Nobody sees an item that does not stand, so nothing is added up for it.
void MenuBarItem::render() {
    const Bytes bytes = m_isInserted ? reclaimable(m_library) : 0;
    auto nowBeside = figure(bytes);
    if (nowBeside != m_figure) {
        m_figure = std::move(nowBeside);
        m_extra.setFigure(m_figure);
    }
    auto nowOffered = m_isInserted ? menu(bytes) : std::vector<MenuBarExtra::Entry>();
    if (nowOffered != m_menu) {
        m_menu = std::move(nowOffered);
        m_extra.setMenu(m_menu);
    }
}

void MenuBarItem::press(const MenuBarExtra::Press& press) {
    if (m_popover) {
        closePopover();
        return;
    }
    const Instant now = m_library.platform().clock.instant();
    if (m_isInserted && (!m_closedAt || now - *m_closedAt >= kAfterClosing)) {
        open(press);
    }
}

void MenuBarItem::open(const MenuBarExtra::Press& press) {
    const auto place = press.place ? std::optional(QPoint(press.place->x, press.place->y)) : std::nullopt;
    m_popover = new MenuBarPopover(m_library, place);
    connect(m_popover, &MenuBarPopover::closed, this, [this] {
        m_closedAt = m_library.platform().clock.instant();
        m_popover->deleteLater();
        m_popover.clear();
    });
    connect(m_popover->view(), &MenuBarView::wanted, this,
            [this, token = press.activationToken](MenuBarWay way) { go(way, token); });
    m_popover->show();
}

void MenuBarItem::choose(const MenuBarExtra::Choice& choice) {
    const auto way =
        std::ranges::find(kAllMenuBarWays, choice.id, [](MenuBarWay each) { return static_cast<int>(each); });
    if (m_isInserted && way != kAllMenuBarWays.end() && isOpen(*way, reclaimable(m_library))) {
        go(*way, choice.activationToken);
    }
}

void MenuBarItem::noticeShown() {
    if (!m_extra.isShown()) {
        closePopover();
    }
    emit standingChanged();
}

void MenuBarItem::go(MenuBarWay way, const std::string& token) {
    closePopover();
    switch (way) {
    case MenuBarWay::review:
        showOverview(token);
        m_notifications.post(NotificationName::kOpenSweepPreview);
        return;
    case MenuBarWay::window:
        showOverview(token);
        return;
    case MenuBarWay::settings:
        m_scenes.showSettings(Scenes::SettingsTab::automation);
        return;
    case MenuBarWay::quit:
        m_quit();
        return;
    }
}

void MenuBarItem::showOverview(const std::string& token) {
    m_scenes.showWindow(token);
    m_notifications.post(NotificationName::kShowOverview);
}

} // namespace quillane
