// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QWidget>

namespace quillfen {

class AgentLabel;
class Button;
class StateText;

/// An orphan appliance: its container, what it does, its ports, and a button that removes it.
class OrphanRow final : public QWidget {
    Q_OBJECT

public:
    explicit OrphanRow(QWidget *parent = nullptr);
    void setAppliance(const QString &container, const QString &status, const QString &ports);

Q_SIGNALS:
    void removed();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    AgentLabel *m_container;
    StateText *m_status;
    AgentLabel *m_ports;
    Button *m_remove;
};

/// A ready copy: its name, what it is a copy of, and the buttons that promote and discard it.
class CopyRow final : public QWidget {
    Q_OBJECT

public:
    explicit CopyRow(QWidget *parent = nullptr);
    void setCopy(const QString &name, const QString &origin);
    [[nodiscard]] const QString &name() const;

Q_SIGNALS:
    void promoted();
    void discarded();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    AgentLabel *m_name;
    AgentLabel *m_origin;
    Button *m_promote;
    Button *m_discard;
};

} // namespace quillfen
