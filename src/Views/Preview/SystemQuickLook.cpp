#include "Preview/SystemQuickLook.h"
#include "Components/LibraryObserver.h"
#include "State/ContentState.h"
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QWidget>
#include <utility>

namespace quillane {

namespace {

Qt::Key keyOf(PreviewPanel::Key key) {
    switch (key) {
    case PreviewPanel::Key::up:
        return Qt::Key_Up;
    case PreviewPanel::Key::down:
        return Qt::Key_Down;
    case PreviewPanel::Key::home:
        return Qt::Key_Home;
    case PreviewPanel::Key::end:
        return Qt::Key_End;
    }
    return Qt::Key_unknown;
}

} // namespace

SystemQuickLook::SystemQuickLook(PreviewPanel& panel, ContentState& state, QWidget& window,
                                 std::function<QWidget*()> list)
    : QObject(&window)
    , m_panel(panel)
    , m_state(state)
    , m_window(window)
    , m_findList(std::move(list))
    , m_observer(new LibraryObserver([this] { render(); }, this)) {
    panel.setHandlers(
        {.closed = [this] { m_state.quickLookURL = std::nullopt; },
         .pressed = [this](PreviewPanel::Key key, bool withShift) { return pass(key, withShift); }});
    window.installEventFilter(this);
    m_observer->renderNow();
}

SystemQuickLook::~SystemQuickLook() {
    m_panel.setHandlers({});
    m_panel.hide();
}

void SystemQuickLook::render() {
    const auto url = m_state.quickLookURL.get();
    const auto section = m_state.section.get();
    if (!url) {
        m_url.reset();
        m_panel.hide();
    } else if (m_url && section != m_section) {
        m_state.quickLookURL = std::nullopt;
    } else if (!m_url) {
        m_section = section;
        m_list = m_findList();
        show(*url);
    } else if (*m_url != *url) {
        show(*url);
    }
}

void SystemQuickLook::show(const FileURL& url) {
    m_url = url;
    m_panel.show(url, m_window.winId());
}

bool SystemQuickLook::pass(PreviewPanel::Key key, bool withShift) {
    if (!m_list) {
        return false;
    }
    QKeyEvent press(QEvent::KeyPress, keyOf(key), withShift ? Qt::ShiftModifier : Qt::NoModifier);
    QCoreApplication::sendEvent(m_list, &press);
    return true;
}

// Whoever closes the panel comes back to the window, so that also a closing that nobody tells of is noticed.
bool SystemQuickLook::eventFilter(QObject* object, QEvent* event) {
    const bool isEnd = event->type() == QEvent::Hide && !event->spontaneous();
    const bool isClosed = event->type() == QEvent::WindowActivate && m_url && !m_panel.isShown();
    if ((isEnd || isClosed) && m_state.quickLookURL.peek()) {
        m_state.quickLookURL = std::nullopt;
    }
    return QObject::eventFilter(object, event);
}

} // namespace quillane
