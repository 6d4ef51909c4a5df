// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/window/keymap.h"
#include "shell/window/section.h"
#include "state/notifications.h"

#include <QWidget>

#include <memory>

class QBoxLayout;

namespace quillfen {

class AppState;
class Board;
class Sidebar;

/// The signed-in workspace: the sidebar and the board of the selected section, which lives only while it is selected.
class MainView final : public QWidget {
    Q_OBJECT

public:
    /// Starts on the section that the environment asks for.
    explicit MainView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);

    [[nodiscard]] Section section() const noexcept { return m_section; }
    void setSection(quillfen::Section section);
    /// Whether `command` is about this workspace and would do anything now. What lies beneath a sheet holds still.
    [[nodiscard]] bool offers(KeyAction command) const;
    /// Does it, where it is offered.
    void perform(KeyAction command);

Q_SIGNALS:
    void aboutRequested();
    void shortcutsRequested();
    void activityRequested();

private:
    [[nodiscard]] Board *createBoard();

    std::shared_ptr<AppState> m_state;
    Section m_section;
    Sidebar *m_sidebar;
    QBoxLayout *m_layout;
    Board *m_board;
    Notifications::Subscription m_navigation;
};

} // namespace quillfen
