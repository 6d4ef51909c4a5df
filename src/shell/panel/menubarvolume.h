// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/panel/menubarrows.h"

#include <QWidget>

namespace quillfen {

class AgentLabel;
class DarkTextButton;

/// A volume in the menu-bar panel. Its name opens the folder where it is mounted.
class MenuBarVolume final : public QWidget {
    Q_OBJECT

public:
    explicit MenuBarVolume(QWidget *parent = nullptr);

    void show(const MenuBarRow &row);

Q_SIGNALS:
    void openRequested(const QString &folder);

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void open();

    DarkTextButton *m_name;
    AgentLabel *m_offsite;
    AgentLabel *m_line;
    std::optional<QString> m_folder;
};

} // namespace quillfen
