#include "Review/PutBack.h"
#include "AppLibrary.h"
#include "State/ContentState.h"
#include <QApplication>

namespace quillane {

namespace {

// A sheet that is open blocks the window, so what is told meanwhile lies over the sheet.
QWidget* foremost(QWidget& window) {
    auto* const sheet = QApplication::activeModalWidget();
    return sheet != nullptr && sheet->parentWidget() == &window ? sheet : &window;
}

} // namespace

PutBack::PutBack(AppLibrary& library, ContentState& state, QWidget& window)
    : QObject(&window)
    , m_library(library)
    , m_state(state)
    , m_window(window) {}

// The task belongs to the library, so that a window that goes doesn't stop it half way.
void PutBack::start() {
    if (m_state.isPuttingBack.get() || m_library.isSweeping.get() || !m_library.lastOperation->has_value()) {
        return; // a second one would fail at everything that the first has moved, and one during a sweep at all
    }
    m_state.isPuttingBack = true;
    m_library.tasks().start([&library = m_library, self = QPointer(this)](StopToken) -> Task<> {
        const auto report = co_await library.undoLastOperation();
        if (self) {
            self->finish(report);
        }
    });
}

void PutBack::finish(const Uninstaller::Report& report) {
    m_state.isPuttingBack = false;
    delete m_alert; // a newer report takes the place of an older one
    m_alert = ResultAlert::presentPutBack(
        report, [this] { AppLibrary::openFullDiskAccessSettings(m_library.platform()); }, foremost(m_window));
}

} // namespace quillane
