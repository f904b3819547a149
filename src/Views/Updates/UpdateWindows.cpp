#include "Updates/UpdateWindows.h"
#include "Updates/UpdateWindow.h"
#include <utility>

namespace quillane {

UpdateWindows::~UpdateWindows() {
    delete m_window;
}

UpdateWindow* UpdateWindows::window() const {
    return m_window;
}

void UpdateWindows::showChecking(std::function<void()> cancel) {
    opened().showChecking(std::move(cancel));
    present(Asked::byPerson);
}

void UpdateWindows::showUpdate(const AppUpdate& update, const VersionNumber& installed, Asked asked) {
    opened().showUpdate(update, installed);
    present(asked);
}

void UpdateWindows::showUpToDate(const VersionNumber& installed) {
    opened().showUpToDate(installed);
    present(Asked::byPerson);
}

void UpdateWindows::showFailure(Failure failure) {
    opened().showFailure(failure);
    present(Asked::byPerson);
}

UpdateWindow& UpdateWindows::opened() {
    if (!m_window) {
        m_window = new UpdateWindow;
        m_window->setAttribute(Qt::WA_DeleteOnClose);
        // It goes at a later turn, and by then another one may have been opened.
        QObject::connect(m_window, &QDialog::finished, [this] { m_window.clear(); });
    }
    return *m_window;
}

void UpdateWindows::present(Asked asked) {
    if (m_opening && m_window->isHidden()) {
        m_opening(*m_window, asked == Asked::byPerson);
    }
    m_window->setAttribute(Qt::WA_ShowWithoutActivating, asked == Asked::byItself);
    m_window->show();
    if (asked == Asked::byPerson) {
        m_window->raise();
        m_window->activateWindow();
    }
}

} // namespace quillane
