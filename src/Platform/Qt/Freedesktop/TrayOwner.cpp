#include "TrayOwner.h"
#include "Linux/XcbReply.h"
#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QGuiApplication>
#include <QObject>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <xcb/xcb.h>

namespace quillane {

// A panel owns a selection of the display's first screen, and tells the root window when it has come to. Qt listens
// there already. That it goes, its window tells.
class TrayOwner::Watch final : public QAbstractNativeEventFilter {
  public:
    Watch(xcb_connection_t* display, std::function<void()> changed)
        : m_display(display)
        , m_selection(xcbAtomOf(display, "_NET_SYSTEM_TRAY_S0"))
        , m_manager(xcbAtomOf(display, "MANAGER"))
        , m_changed(std::move(changed)) {
        qGuiApp->installNativeEventFilter(this);
        m_owner = findOwner();
    }
    ~Watch() override { qGuiApp->removeNativeEventFilter(this); }

    bool isThere() const { return m_owner != XCB_WINDOW_NONE; }

    bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override {
        const auto* const event = static_cast<const xcb_generic_event_t*>(message);
        if (isArrival(*event) || isEnd(*event)) {
            look();
        }
        return false; // others want it too
    }

  private:
    static int kindOf(const xcb_generic_event_t& event) {
        constexpr int kSentByProgram = 0x80;
        return event.response_type & ~kSentByProgram;
    }
    bool isArrival(const xcb_generic_event_t& event) const {
        if (kindOf(event) != XCB_CLIENT_MESSAGE) {
            return false;
        }
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        return message.type == m_manager && message.data.data32[1] == m_selection;
    }
    bool isEnd(const xcb_generic_event_t& event) const {
        return kindOf(event) == XCB_DESTROY_NOTIFY &&
               reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == m_owner;
    }
    void look() {
        const bool before = isThere();
        m_owner = findOwner();
        if (before != isThere()) {
            QMetaObject::invokeMethod(&m_turns, [this] { m_changed(); }, Qt::QueuedConnection);
        }
    }
    xcb_window_t ask() const {
        const XcbReply<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(m_display, xcb_get_selection_owner(m_display, m_selection),
                                          nullptr),
            &std::free);
        return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    }
    // One that ends before it is listened to is nobody any more when it is asked for again.
    xcb_window_t findOwner() const {
        const auto owner = ask();
        if (owner == XCB_WINDOW_NONE) {
            return owner;
        }
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(m_display, owner, XCB_CW_EVENT_MASK, &events);
        return ask();
    }

    xcb_connection_t* m_display;
    xcb_atom_t m_selection;
    xcb_atom_t m_manager;
    std::function<void()> m_changed;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    QObject m_turns; // what it still owes goes with it
};

TrayOwner::TrayOwner(std::function<void()> changed) {
    if (auto* const display = displayOfApplication()) {
        m_watch = std::make_unique<Watch>(display, std::move(changed));
    }
}

TrayOwner::~TrayOwner() = default;

bool TrayOwner::isThere() const {
    return m_watch && m_watch->isThere();
}

} // namespace quillane
