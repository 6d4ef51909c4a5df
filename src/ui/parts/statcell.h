// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <initializer_list>

namespace quillfen {

class AgentLabel;

/// One statistic: its caption over its value. `statRow` puts several side by side.
class StatCell final : public QWidget {
    Q_OBJECT

public:
    StatCell(const QString &k, const QString &v, bool dark = false, QWidget *parent = nullptr);

    void setValue(const QString &v);
    /// A hairline at the left edge, for every cell of a row but the first.
    void setDivided(bool divided);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    AgentLabel *m_value;
    bool m_dark;
    bool m_divided = false;
};

/// The cells side by side, equal in width, hairlines between them.
[[nodiscard]] QWidget *statRow(std::initializer_list<StatCell *> cells, QWidget *parent = nullptr);

} // namespace quillfen
