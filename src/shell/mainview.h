// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/section.h"
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

Q_SIGNALS:
    void aboutRequested();

private:
    void addKeys();
    void choose(std::size_t number);
    [[nodiscard]] Board *createBoard();

    std::shared_ptr<AppState> m_state;
    Section m_section;
    Sidebar *m_sidebar;
    QBoxLayout *m_layout;
    Board *m_board;
    Notifications::Subscription m_navigation;
};

} // namespace quillfen
