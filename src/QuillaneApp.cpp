#include "QuillaneApp.h"
#include "AutomationSettings.h"
#include "IconCache.h"
#include "Shell/ContentView.h"
#include "WindowActivation.h"
#include <QWindow>

namespace quillane {

QuillaneApp::QuillaneApp(const Platform& platform)
    : m_platform(platform)
    , m_library(m_platform) {
    IconCache::shared().attach(&m_platform);
    AutomationSettings::registerDefaults(m_platform.defaults);
}

QuillaneApp::~QuillaneApp() {
    delete m_settings;
    delete m_window;
    IconCache::shared().attach(nullptr);
}

void QuillaneApp::showWindow(const std::string& activationToken) {
    if (!m_window) {
        m_window = new ContentView(m_library, m_notifications, this);
        m_window->setAttribute(Qt::WA_DeleteOnClose);
        m_library.startAutomationLoop();
        m_library.syncUninstallWatcher();
    }
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    WindowActivation::activate(*m_window->windowHandle(), activationToken);
}

void QuillaneApp::showSettings(SettingsTab tab) {
    const bool isNew = !m_settings;
    if (isNew) {
        m_settings = new SettingsView(m_library, m_notifications, *this);
        m_settings->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_settings->showTab(tab);
    if (isNew) {
        m_settings->placeOver(m_window);
    }
    m_settings->setWindowState(m_settings->windowState() & ~Qt::WindowMinimized);
    m_settings->show();
    WindowActivation::activate(*m_settings->windowHandle(), {});
}

ContentView* QuillaneApp::window() const {
    return m_window;
}

SettingsView* QuillaneApp::settings() const {
    return m_settings;
}

} // namespace quillane
