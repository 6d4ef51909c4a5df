// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/compositing.h"

#include <QByteArray>
#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace quillfen {

bool isComposited()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t *connection = x11 ? x11->connection() : nullptr;
    if (!connection) {
        return true; // Wayland always composites; offscreen pictures keep their transparency
    }
    // A compositor owns the selection of its screen for as long as it works. Screen 0 is the one modern servers have.
    constexpr char selection[] = "_NET_WM_CM_S0";
    struct Free {
        void operator()(void *reply) const { std::free(reply); }
    };
    const xcb_intern_atom_cookie_t asked = xcb_intern_atom(connection, 1, sizeof selection - 1, selection);
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(xcb_intern_atom_reply(connection, asked, nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE) {
        return false;
    }
    const xcb_get_selection_owner_cookie_t owned = xcb_get_selection_owner(connection, atom->atom);
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(
        xcb_get_selection_owner_reply(connection, owned, nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace quillfen
