#include "Components/SystemLook.h"
#include <QByteArray>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace quillane::SystemLook {

namespace {

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

// Whoever composes the windows of an X display owns this selection of its first screen.
bool isComposited(xcb_connection_t* display) {
    const QByteArray name = "_NET_WM_CM_S0";
    const Owned<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(
            display, xcb_intern_atom(display, 1, static_cast<std::uint16_t>(name.size()), name.constData()),
            nullptr),
        &std::free);
    if (!atom || atom->atom == XCB_ATOM_NONE) {
        return false;
    }
    const Owned<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(display, xcb_get_selection_owner(display, atom->atom), nullptr),
        &std::free);
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace

bool isNative() {
    return false;
}

bool hasMenuBar() {
    return false;
}

bool blendsWindows() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    auto* const display = x11 != nullptr ? x11->connection() : nullptr; // null without a display too
    return display == nullptr || isComposited(display);
}

} // namespace quillane::SystemLook
