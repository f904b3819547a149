#include "WindowActivation.h"
#include "ActivationToken.h"
#include "XcbReply.h"
#include <QByteArray>
#include <QGuiApplication>
#include <QWindow>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace quillane::WindowActivation {
namespace {

xcb_window_t rootOf(xcb_connection_t* display, xcb_window_t window) {
    const XcbReply<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(display, xcb_get_geometry(display, window), nullptr), &std::free);
    return reply ? reply->root : xcb_window_t{XCB_WINDOW_NONE};
}

// Asks the window manager, as from an application, for what the user did at that time.
void askManager(xcb_connection_t* display, xcb_window_t window, std::uint32_t time) {
    constexpr std::uint32_t kFromApplication = 1;
    xcb_change_property(display, XCB_PROP_MODE_REPLACE, window, xcbAtomOf(display, "_NET_WM_USER_TIME"),
                        XCB_ATOM_CARDINAL, 32, 1, &time);
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = xcbAtomOf(display, "_NET_ACTIVE_WINDOW");
    message.data.data32[0] = kFromApplication;
    message.data.data32[1] = time;
    std::array<char, 32> event = {}; // the size of every event on the wire
    static_assert(sizeof(message) == std::tuple_size_v<decltype(event)>);
    std::memcpy(event.data(), &message, sizeof(message));
    xcb_send_event(display, 0, rootOf(display, window),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, event.data());
    xcb_flush(display);
}

} // namespace

void activate(QWindow& window, const std::string& token) {
    if (!token.empty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token)); // Qt takes it from there
    }
    window.raise();
    const auto time = ActivationToken::timeOf(token);
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (time && x11 != nullptr && x11->connection() != nullptr) {
        askManager(x11->connection(), static_cast<xcb_window_t>(window.winId()), *time);
    } else {
        window.requestActivate();
    }
}

} // namespace quillane::WindowActivation
