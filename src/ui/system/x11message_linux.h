// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <array>
#include <cstdint>

class QWidget;

namespace quillfen {

// What a window tells window managers and panels on an X server beyond what Qt says for it. None does anything on
// another display; none waits for more than the server's names of what is told.

/// Sets a property of the window to a text, or removes it where the text is empty.
void setWindowText(const QWidget &window, const QByteArray &property, const QByteArray &text);

/// Sends the window manager a message about the window (EWMH, root window messages).
void sendToRoot(const QWidget &window, const QByteArray &type, const std::array<std::uint32_t, 5> &data);

/// Tells everybody who watches the screen a text of any length (startup-notification 0.1, message broadcasting).
void broadcast(const QWidget &window, const QByteArray &type, const QByteArray &text);

} // namespace quillfen
