#include "ProgramLife.h"
#include "AppLibrary.h"
#include "Components/LibraryObserver.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "MenuBarExtra.h"
#include <QCoreApplication>
#include <QEvent>
#include <utility>

namespace quillane {

ProgramLife::ProgramLife(AppLibrary& library, std::function<bool()> hasWindow, std::function<void()> end)
    : m_library(library)
    , m_hasWindow(std::move(hasWindow))
    , m_end(std::move(end))
    , m_observer(new LibraryObserver([this] { endIfFree(); }, this)) {
    qApp->installEventFilter(this);
}

ProgramLife::~ProgramLife() {
    stopWaiting();
}

void ProgramLife::windowOpens() {
    m_hadWindow = true;
    m_isQuitting = false;
    stopWaiting();
}

void ProgramLife::windowHasClosed() {
    if (!m_hasWindow() && !m_isInDock && !(isWanted() && isShown())) {
        quit();
    }
}

void ProgramLife::itemHasChanged() {
    if (m_hasWindow() || !m_hadWindow || m_isInDock) {
        return;
    }
    if (!isWanted()) {
        quit();
    } else if (isShown()) {
        stopWaiting();
    } else if (!m_wait) {
        waitForPanel();
    }
}

void ProgramLife::waitForPanel() {
    auto& clock = m_library.platform().clock;
    m_wait = clock.callAt(clock.instant() + kPanelMayBeAway, [this] {
        m_wait.reset();
        windowHasClosed();
    });
}

void ProgramLife::stopWaiting() {
    if (m_wait) {
        m_library.platform().clock.cancel(*m_wait);
        m_wait.reset();
    }
}

void ProgramLife::quit() {
    m_isQuitting = true;
    m_observer->renderNow();
}

// Is observed, so that the end of what runs is heard of: a turn later, when all that belongs to it is done.
void ProgramLife::endIfFree() {
    if (!isBusy() && m_isQuitting && !std::exchange(m_hasEnded, true)) {
        m_end();
    }
}

bool ProgramLife::isBusy() const {
    const bool isSweeping = m_library.isSweeping.get(); // both are read, so that both are observed
    return m_library.isPuttingBack.get() || isSweeping;
}

bool ProgramLife::isWanted() const {
    return m_library.platform().defaults.boolean(DefaultsKeys::kShowMenuBarExtra);
}

bool ProgramLife::isShown() const {
    return m_library.platform().menuBarExtra.isShown();
}

// Qt would ask every window to close, and one that refuses would keep the program: the review does while its sweep
// runs, and would not be asked again afterwards.
bool ProgramLife::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::Quit || object != qApp) {
        return false;
    }
    event->setAccepted(!isBusy());
    quit();
    return true;
}

} // namespace quillane
