#include "WindowActivation.h"
#include "ActivationToken.h"
#include "XcbReply.h"
#include <QByteArray>
#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstddef>
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

template <typename Message>
void send(xcb_connection_t* display, xcb_window_t root, std::uint32_t listeners, const Message& message) {
    std::array<char, 32> event = {}; // the size of every event on the wire
    static_assert(sizeof(message) == std::tuple_size_v<decltype(event)>);
    std::memcpy(event.data(), &message, sizeof(message));
    xcb_send_event(display, 0, root, listeners, event.data());
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
    send(display, rootOf(display, window),
         XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, message);
    xcb_flush(display);
}

// A text to whoever follows starts, in pieces of twenty bytes that all name the same window. The last one ends with a
// zero.
void tellOfStart(xcb_connection_t* display, xcb_window_t window, const std::string& text) {
    const auto root = rootOf(display, window);
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = window;
    message.type = xcbAtomOf(display, "_NET_STARTUP_INFO_BEGIN");
    const std::size_t size = text.size() + 1;
    for (std::size_t from = 0; from < size; from += sizeof(message.data)) {
        message.data = {};
        std::memcpy(message.data.data8, text.c_str() + from, std::min(sizeof(message.data), size - from));
        send(display, root, XCB_EVENT_MASK_PROPERTY_CHANGE, message);
        message.type = xcbAtomOf(display, "_NET_STARTUP_INFO");
    }
    xcb_flush(display);
}

} // namespace

void activate(QWindow& window, const std::string& token) {
    if (!token.empty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token)); // Qt takes it from there
    }
    window.raise();
    const auto time = ActivationToken::timeOf(token);
    auto* const display = displayOfApplication();
    if (time && display != nullptr) {
        askManager(display, static_cast<xcb_window_t>(window.winId()), *time);
    } else {
        window.requestActivate();
    }
    if (const auto text = ActivationToken::endOfStart(token); display != nullptr && !text.empty()) {
        tellOfStart(display, static_cast<xcb_window_t>(window.winId()), text);
    }
}

} // namespace quillane::WindowActivation
