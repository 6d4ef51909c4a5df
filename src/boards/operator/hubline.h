// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/oprows.h"
#include "ui/lists/cellrow.h"

#include <QSet>

namespace quillfen {

class AgentLabel;
class Pill;
class StateText;

/// A hub and what can be done with it. In a narrow window its address stands under its name.
class HubLine final : public CellRow {
    Q_OBJECT

public:
    explicit HubLine(QWidget *parent = nullptr);

    /// `running` are the actions that have not ended, as the model names them.
    void setHub(const HubRow &hub, const QSet<QString> &running);
    [[nodiscard]] const HubRow &hub() const noexcept { return m_hub; }

Q_SIGNALS:
    void pollWanted();
    void rescanWanted();
    void promoteWanted();
    void demoteWanted();
    void retireWanted();

protected:
    [[nodiscard]] std::vector<QRect> rooms(const QRect &inner) const override;
    void paintEvent(QPaintEvent *event) override;

private:
    HubRow m_hub;
    AgentLabel *m_name;
    Pill *m_role;
    AgentLabel *m_address;
    StateText *m_state;
    AgentLabel *m_sold;
    Button *m_poll;
    Button *m_rescan;
    Button *m_promote;
    Button *m_demote;
    Button *m_retire;
};

/// A hub that follows the primary one, and how far it is behind.
class ReplicaLine final : public CellRow {
    Q_OBJECT

public:
    explicit ReplicaLine(QWidget *parent = nullptr);
    void setReplica(const ReplicaRow &replica);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    AgentLabel *m_name;
    AgentLabel *m_address;
    StateText *m_state;
    AgentLabel *m_lag;
};

} // namespace quillfen
