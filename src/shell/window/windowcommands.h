// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/window/keymap.h"

#include <QObject>

#include <functional>
#include <map>

class QAction;
class QMenuBar;
class QWidget;

namespace quillfen {

/// The commands of the main window, one `QAction` each with the keys of the key map. The window's keys and the menu bar
/// show the same objects, so that no key stands for two of them.
class WindowCommands final : public QObject {
    Q_OBJECT

public:
    /// Their keys act wherever the focus is in `window`, which owns them.
    explicit WindowCommands(QWidget *window);

    [[nodiscard]] QAction *action(KeyAction command) const { return m_actions.at(command); }

Q_SIGNALS:
    void chosen(quillfen::KeyAction command);

private:
    std::map<KeyAction, QAction *> m_actions;
};

/// Whether a command would do anything now.
using Offers = std::function<bool(KeyAction)>;

/// Makes the menus of a menu bar: File, Go, View, Window, Help. A menu that opens shows as disabled what would do
/// nothing; its keys stay alive all the same.
void fillMenuBar(QMenuBar &bar, const WindowCommands &commands, const Offers &offers);

} // namespace quillfen
