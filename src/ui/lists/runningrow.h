// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

namespace quillfen {

class AgentLabel;

/// Something that takes long and goes on: what it is, since when, and the last that was heard of it.
class RunningRow final : public QWidget {
    Q_OBJECT

public:
    explicit RunningRow(QWidget *parent = nullptr);

    void setOperation(const QString &title, const QString &since, const QString &lastLine);

private:
    AgentLabel *m_title;
    AgentLabel *m_since;
    AgentLabel *m_line;
};

} // namespace quillfen
