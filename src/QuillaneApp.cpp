#include "QuillaneApp.h"
#include "AutomationSettings.h"
#include "IconCache.h"
#include "Shell/ContentView.h"
#include "WindowActivation.h"
#include <QApplication>
#include <QWindow>
#include <utility>

namespace quillane {

namespace {

// A window is hidden only once it is closed, and then waits for its deletion. What is posted meanwhile is not for it.
template <class Window>
void forgetClosed(QPointer<Window>& window) {
    if (auto* const closed = window.data(); closed != nullptr && closed->isHidden()) {
        window.clear();
        delete closed;
    }
}

bool isOpen(const QWidget* window) {
    return window != nullptr && !window->isHidden();
}

// Before anything reads the settings.
Platform withDefaults(Platform platform) {
    AutomationSettings::registerDefaults(platform.defaults);
    return platform;
}

} // namespace

void QuillaneApp::endProgram() {
    QCoreApplication::exit();
}

QuillaneApp::QuillaneApp(const Platform& platform, std::function<void()> end)
    : m_platform(withDefaults(platform))
    , m_library(m_platform)
    , m_life(
          m_library, [this] { return hasWindow(); },
          [this, end = std::move(end)] {
              finishInput();
              end();
          })
    , m_item(m_library, m_notifications, *this, [this] { m_life.quit(); }) {
    IconCache::shared().attach(&m_platform);
    QApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(&m_item, &MenuBarItem::standingChanged, &m_life, [this] { m_life.itemHasChanged(); });
}

QuillaneApp::~QuillaneApp() {
    delete m_settings;
    delete m_window;
    IconCache::shared().attach(nullptr);
}

bool QuillaneApp::hasWindow() const {
    return isOpen(m_window) || isOpen(m_settings) || isOpen(m_other);
}

void QuillaneApp::finishInput() {
    if (m_settings) {
        m_settings->finishInput();
    }
}

void QuillaneApp::countWindow(QWidget& window, bool isAskedFor) {
    if (isAskedFor) {
        m_life.windowOpens();
    }
    m_other = &window;
    follow(window);
}

// The last word on a closed window comes with its deletion, and by then another may be open.
void QuillaneApp::follow(QWidget& window) {
    window.setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(
        &window, &QObject::destroyed, &m_life, [this] { m_life.windowHasClosed(); }, Qt::QueuedConnection);
}

void QuillaneApp::makeWindow() {
    m_window = new ContentView(m_library, m_notifications, this);
    follow(*m_window);
    m_library.startAutomationLoop();
    m_library.syncUninstallWatcher();
}

void QuillaneApp::showWindow(const std::string& activationToken) {
    m_life.windowOpens();
    m_item.closePopover();
    forgetClosed(m_window);
    if (!m_window) {
        makeWindow();
    }
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    WindowActivation::activate(*m_window->windowHandle(), activationToken);
}

void QuillaneApp::showSettings(SettingsTab tab) {
    m_life.windowOpens();
    m_item.closePopover();
    forgetClosed(m_settings);
    const bool isNew = !m_settings;
    if (isNew) {
        m_settings = new SettingsView(m_library, m_notifications, *this);
        follow(*m_settings);
    }
    m_settings->showTab(tab);
    if (isNew) {
        m_settings->placeOver(window());
    }
    m_settings->setWindowState(m_settings->windowState() & ~Qt::WindowMinimized);
    m_settings->show();
    WindowActivation::activate(*m_settings->windowHandle(), {});
}

// A press on the item in the menu bar may make the program active too: that wants the popover alone.
void QuillaneApp::liveInDock() {
    m_life.liveInDock();
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &m_life,
                     [this](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive && !hasWindow() && !m_item.popover()) {
                             showWindow();
                         }
                     });
}

ContentView* QuillaneApp::window() const {
    return isOpen(m_window) ? m_window.get() : nullptr;
}

SettingsView* QuillaneApp::settings() const {
    return isOpen(m_settings) ? m_settings.get() : nullptr;
}

} // namespace quillane
