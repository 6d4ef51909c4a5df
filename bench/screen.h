// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace quillfen::bench {

/// The display's own view of its windows: no program is changed for the measurement.
class Screen final {
public:
    /// Throws std::runtime_error when the display cannot be reached.
    explicit Screen(const std::string &display);
    ~Screen();
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    /// Whether a window of a main window's size shows its own pixels. Qt's windows have no background: until the
    /// program paints they keep the black of the empty screen.
    [[nodiscard]] bool showsPaintedWindow() const;
    /// Whether a window of a main window's size is on the screen, painted or not.
    [[nodiscard]] bool showsWindow() const;
    /// Asks such windows to close, as the button of a window manager does.
    void closeWindows() const;

private:
    [[nodiscard]] std::vector<xcb_window_t> mainWindows() const;
    [[nodiscard]] bool painted(xcb_window_t window) const;
    [[nodiscard]] unsigned pixel(xcb_window_t window, int x, int y) const;
    [[nodiscard]] xcb_atom_t atom(const std::string &name) const;

    xcb_connection_t *m_connection;
    xcb_window_t m_root = 0;
};

} // namespace quillfen::bench
