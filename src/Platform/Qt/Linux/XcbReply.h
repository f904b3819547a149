#pragma once
#include <QByteArray>
#include <QGuiApplication>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace quillane {

// What the display answered, or null.
template <typename Reply>
using XcbReply = std::unique_ptr<Reply, decltype(&std::free)>;

// Null where windows are no windows of X11.
inline xcb_connection_t* displayOfApplication() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

// Waits for the display. None when it does not answer.
inline xcb_atom_t xcbAtomOf(xcb_connection_t* display, const QByteArray& name) {
    const auto length = static_cast<std::uint16_t>(name.size());
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(display, xcb_intern_atom(display, 0, length, name.constData()), nullptr),
        &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace quillane
