// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/system/x11message_linux.h"

#include <QGuiApplication>
#include <QWidget>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace quillfen {

namespace {

struct Free {
    void operator()(void *reply) const { std::free(reply); }
};

xcb_connection_t *display()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_atom_t atom(const QByteArray &name)
{
    const auto asked = xcb_intern_atom(display(), 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(display(), asked, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

xcb_window_t idOf(const QWidget &window)
{
    return static_cast<xcb_window_t>(window.winId());
}

xcb_client_message_event_t messageAbout(const QWidget &window, const QByteArray &type, std::uint8_t format)
{
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = format;
    message.window = idOf(window);
    message.type = atom(type);
    return message;
}

void send(const xcb_client_message_event_t &message, std::uint32_t toWhom)
{
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display())).data->root;
    xcb_send_event(display(), 0, root, toWhom, reinterpret_cast<const char *>(&message));
}

} // namespace

void setWindowText(const QWidget &window, const QByteArray &property, const QByteArray &text)
{
    if (display() == nullptr) {
        return;
    }
    if (text.isEmpty()) {
        xcb_delete_property(display(), idOf(window), atom(property));
    } else {
        xcb_change_property(display(), XCB_PROP_MODE_REPLACE, idOf(window), atom(property), atom("UTF8_STRING"), 8,
                            static_cast<std::uint32_t>(text.size()), text.constData());
    }
}

void sendToRoot(const QWidget &window, const QByteArray &type, const std::array<std::uint32_t, 5> &data)
{
    if (display() == nullptr) {
        return;
    }
    xcb_client_message_event_t message = messageAbout(window, type, 32);
    std::ranges::copy(data, std::begin(message.data.data32));
    send(message, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    xcb_flush(display());
}

void broadcast(const QWidget &window, const QByteArray &type, const QByteArray &text)
{
    if (display() == nullptr) {
        return;
    }
    // The text and the zero at its end, in messages of twenty bytes each, of which the first has a type of its own.
    xcb_client_message_event_t message = messageAbout(window, type + "_BEGIN", 8);
    const xcb_atom_t following = atom(type);
    constexpr qsizetype most = sizeof message.data.data8;
    for (qsizetype at = 0; at <= text.size(); at += most) {
        const qsizetype count = std::min(most, text.size() + 1 - at);
        std::memset(message.data.data8, 0, most);
        std::memcpy(message.data.data8, text.constData() + at, static_cast<std::size_t>(count));
        send(message, XCB_EVENT_MASK_PROPERTY_CHANGE);
        message.type = following;
    }
    xcb_flush(display());
}

} // namespace quillfen
