// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QWidget>

namespace quillfen {

class AgentLabel;
class IconView;

/// One thing that the engine needs of this computer, and what puts it right when it is not.
class CheckRow final : public QWidget {
    Q_OBJECT

public:
    explicit CheckRow(QWidget *parent = nullptr);

    /// `fix` is shown for a row that is not `ok`.
    void setCheck(const QString &name, bool ok, const QString &info, const QString &fix);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    IconView *m_mark;
    AgentLabel *m_name;
    AgentLabel *m_info;
    AgentLabel *m_fix;
};

} // namespace quillfen
