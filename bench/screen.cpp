// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "screen.h"

#include "surroundings.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <memory>

namespace quillfen::bench {

namespace {

constexpr int smallestMainWindow = 600;

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
Owned<Reply> owned(Reply *reply)
{
    return {reply, &std::free};
}

} // namespace

Screen::Screen(const std::string &display) : m_connection(xcb_connect(display.c_str(), nullptr))
{
    require(xcb_connection_has_error(m_connection) == 0, "the display cannot be reached");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
}

Screen::~Screen()
{
    xcb_disconnect(m_connection);
}

bool Screen::showsPaintedWindow() const
{
    const auto windows = mainWindows();
    return std::any_of(windows.begin(), windows.end(), [this](xcb_window_t window) { return painted(window); });
}

bool Screen::showsWindow() const
{
    return !mainWindows().empty();
}

void Screen::closeWindows() const
{
    for (const xcb_window_t window : mainWindows()) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = atom("WM_PROTOCOLS");
        message.data.data32[0] = atom("WM_DELETE_WINDOW");
        xcb_send_event(m_connection, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&message));
    }
    xcb_flush(m_connection);
}

std::vector<xcb_window_t> Screen::mainWindows() const
{
    const auto tree = owned(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
    require(tree != nullptr, "the display is gone");
    const xcb_window_t *all = xcb_query_tree_children(tree.get());
    std::vector<xcb_window_t> windows;
    std::copy_if(all, all + xcb_query_tree_children_length(tree.get()), std::back_inserter(windows),
                 [this](xcb_window_t window) {
                     const auto attributes = owned(xcb_get_window_attributes_reply(
                         m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
                     const auto place =
                         owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
                     return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE && place &&
                            place->width >= smallestMainWindow;
                 });
    return windows;
}

bool Screen::painted(xcb_window_t window) const
{
    const auto place = owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
    if (!place) {
        return false;
    }
    for (const int part : {1, 2, 3}) {
        if (pixel(window, place->width * part / 4, place->height * part / 4) == 0) {
            return false;
        }
    }
    return true;
}

unsigned Screen::pixel(xcb_window_t window, int x, int y) const
{
    const auto image = owned(
        xcb_get_image_reply(m_connection,
                            xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(x),
                                          static_cast<std::int16_t>(y), 1, 1, 0x00ffffff),
                            nullptr));
    if (!image) {
        return 0;
    }
    const std::uint8_t *bytes = xcb_get_image_data(image.get());
    return static_cast<unsigned>(bytes[0] | bytes[1] << 8 | bytes[2] << 16);
}

xcb_atom_t Screen::atom(const std::string &name) const
{
    const auto length = static_cast<std::uint16_t>(name.size());
    const auto reply =
        owned(xcb_intern_atom_reply(m_connection, xcb_intern_atom(m_connection, 0, length, name.c_str()), nullptr));
    require(reply != nullptr, "the display is gone");
    return reply->atom;
}

} // namespace quillfen::bench
