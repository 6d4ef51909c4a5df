// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <functional>
#include <optional>

class QObject;
class QWidget;

namespace quillfen {

enum class KeyAction;
enum class KeyStyle;
class WindowCommands;

} // namespace quillfen

/// What the window system of each platform wants done differently. One source file each.
namespace quillfen::platform {

/// Takes the title bar away, so that the content begins at the window's top edge. Call it before the window is shown.
void hideTitleBar(QWidget &window);

/// The window has to bring its own controls and its own border for resizing.
[[nodiscard]] bool drawsOwnFrame();

/// Room at the top of the sidebar for the controls that the system puts there.
[[nodiscard]] int sidebarTopInset();

/// Whose keys the program has.
[[nodiscard]] KeyStyle keyStyle();

/// Shows the commands in a menu bar, where programs have one that stands apart from their windows. `offers` tells what
/// would do anything now.
void makeMenuBar(const WindowCommands &commands, const std::function<bool(KeyAction)> &offers);

/// The service manager's own command that restarts the agent, beside the product's; none where they are the same.
[[nodiscard]] std::optional<QString> serviceRestartCommand();

/// Why no window can be shown, and what to do about it, in words for the terminal; none when nothing speaks against it.
/// Needs no application object.
[[nodiscard]] std::optional<QString> displayProblem();

/// Calls `told` with where the desktop puts the buttons of windows, `atLeft` or at the right, once it is known to be
/// told and whenever it changes; never where nobody says. `context` ends the watch.
void watchControlsSide(QObject &context, const std::function<void(bool atLeft)> &told);

/// Who draws the menu of a status icon.
enum class MenuBy {
    Program,
    Desktop, ///< after it has been told over the bus what to draw
};

/// Calls `appeared` whenever the desktop comes to have room for status icons and `gone` when it has none any more;
/// neither where it never has. `context` ends the watch.
void watchStatusArea(QObject &context, const std::function<void(MenuBy)> &appeared, const std::function<void()> &gone);

} // namespace quillfen::platform
