#include "MenuBar/MenuBarItem.h"
#include "AppLibrary.h"
#include "Components/LibraryObserver.h"
#include "DefaultsKeys.h"
#include "Formatting.h"
#include "MenuBar/MenuBarPopover.h"
#include "MenuBar/MenuBarView.h"
#include "NotificationCenter.h"
#include <utility>

namespace quillane {

MenuBarItem::MenuBarItem(AppLibrary& library, NotificationCenter& notifications, Scenes& scenes,
                         std::function<void()> quit)
    : m_library(library)
    , m_notifications(notifications)
    , m_scenes(scenes)
    , m_quit(std::move(quit))
    , m_extra(library.platform().menuBarExtra)
    , m_observer(new LibraryObserver([this] { renderFigure(); }, this)) {
    m_extra.setHandlers(
        {[this](const MenuBarExtra::Press& pressed) { press(pressed); }, [this] { noticeShown(); }});
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

std::string MenuBarItem::figure(const AppLibrary& library) {
    if (library.phase->kind != AppLibrary::Phase::Kind::ready) {
        return {};
    }
    const Bytes bytes = library.selectedSweepBytes();
    return bytes >= 1 ? Formatting::byteCountInMegabytesOrGigabytes(bytes) : std::string();
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

// Nobody sees the figure of an item that does not stand, so nothing is added up for it.
void MenuBarItem::renderFigure() {
    auto now = m_isInserted ? figure(m_library) : std::string();
    if (now != m_figure) {
        m_figure = std::move(now);
        m_extra.setFigure(m_figure);
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
    m_token = press.activationToken;
    m_popover = new MenuBarPopover(m_library, place);
    connect(m_popover, &MenuBarPopover::closed, this, [this] {
        m_closedAt = m_library.platform().clock.instant();
        m_popover->deleteLater();
        m_popover.clear();
    });
    auto* const view = m_popover->view();
    connect(view, &MenuBarView::reviewWanted, this, &MenuBarItem::review);
    connect(view, &MenuBarView::windowWanted, this, &MenuBarItem::showOverview);
    connect(view, &MenuBarView::settingsWanted, this, [this] {
        closePopover();
        m_scenes.showSettings(Scenes::SettingsTab::automation);
    });
    connect(view, &MenuBarView::quitWanted, this, [this] {
        closePopover();
        m_quit();
    });
    m_popover->show();
}

void MenuBarItem::noticeShown() {
    if (!m_extra.isShown()) {
        closePopover();
    }
    emit standingChanged();
}

void MenuBarItem::showOverview() {
    closePopover();
    m_scenes.showWindow(m_token);
    m_notifications.post(NotificationName::kShowOverview);
}

void MenuBarItem::review() {
    showOverview();
    m_notifications.post(NotificationName::kOpenSweepPreview);
}

} // namespace quillane
