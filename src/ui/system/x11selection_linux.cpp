// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/system/x11selection_linux.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace quillfen {

namespace {

struct Free {
    void operator()(void *reply) const { std::free(reply); }
};

} // namespace

std::optional<bool> selectionHasOwner(std::string_view selection)
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t *connection = x11 ? x11->connection() : nullptr;
    if (!connection) {
        return std::nullopt;
    }
    const xcb_intern_atom_cookie_t asked =
        xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(selection.size()), selection.data());
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
