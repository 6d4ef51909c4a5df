// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/export/exportrows.h"

#include <QWidget>

#include <array>

namespace quillfen {

class AgentLabel;
class Button;
class Pill;

/// The latest copy of one volume: what has become of it, and the buttons that fetch it and remove it.
class RecentCopyRow final : public QWidget {
    Q_OBJECT

public:
    explicit RecentCopyRow(QWidget *parent = nullptr);

    void setCopy(const ExportRow &copy);
    /// While its removal goes on.
    void setRemoving(bool removing);
    [[nodiscard]] const QString &link() const noexcept { return m_shown.link; }

Q_SIGNALS:
    void opened();
    void removed();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ExportRow m_shown;
    AgentLabel *m_name;
    Pill *m_state;
    AgentLabel *m_delivery;
    AgentLabel *m_error;
    std::array<AgentLabel *, 3> m_notes;
    Button *m_open;
    Button *m_remove;
};

} // namespace quillfen
