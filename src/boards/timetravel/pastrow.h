// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/timetravel/timetravelrows.h"

#include <QWidget>

namespace quillfen {

class AgentLabel;
class Bar;
class Button;

/// An open view: its name, its second, and what can be done with it.
class OpenViewRow final : public QWidget {
    Q_OBJECT

public:
    explicit OpenViewRow(QWidget *parent = nullptr);

    /// `volume` is whose view it is.
    void setView(const PastVolume &volume, const ViewRow &view);
    [[nodiscard]] const PastVolume &volume() const noexcept { return m_volume; }
    [[nodiscard]] const ViewRow &view() const noexcept { return m_view; }

Q_SIGNALS:
    void shown();
    void mounted();
    void openedAgain();
    void released();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    PastVolume m_volume;
    ViewRow m_view;
    AgentLabel *m_name;
    AgentLabel *m_origin;
    Button *m_show;
    Button *m_mount;
    Button *m_openAgain;
    Button *m_release;
};

/// A new volume in the making: its name, its second, how much of it is there, and what can be done with it.
class NewVolumeRow final : public QWidget {
    Q_OBJECT

public:
    explicit NewVolumeRow(QWidget *parent = nullptr);

    void setRecovery(const RecoveryRow &recovery);
    [[nodiscard]] const RecoveryRow &recovery() const noexcept { return m_recovery; }

Q_SIGNALS:
    void promoted();
    void discarded();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    RecoveryRow m_recovery;
    AgentLabel *m_name;
    AgentLabel *m_origin;
    Bar *m_bar;
    Button *m_promote;
    Button *m_discard;
};

} // namespace quillfen
