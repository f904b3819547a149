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
    delete m_window;
    IconCache::shared().attach(nullptr);
}

void QuillaneApp::showWindow(const std::string& activationToken) {
    if (!m_window) {
        m_window = new ContentView(m_library, m_notifications);
        m_window->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    WindowActivation::activate(*m_window->windowHandle(), activationToken);
}

ContentView* QuillaneApp::window() const {
    return m_window;
}

} // namespace quillane
