// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QWidget>

#include <cstddef>

class QBoxLayout;

namespace quillfen {

class AgentLabel;
class Button;

/// A restore point in its list: its moment, its label and "Open". Shows one point after another.
class RestorePointRow final : public QWidget {
    Q_OBJECT

public:
    explicit RestorePointRow(QWidget *parent = nullptr);

    /// Shows the point at `place` of the list.
    void setPoint(std::size_t place, const QString &timestamp, const QString &label);
    [[nodiscard]] std::size_t place() const noexcept { return m_place; }
    [[nodiscard]] const QString &timestamp() const noexcept { return m_timestamp; }

    [[nodiscard]] Button *button() const noexcept { return m_open; }
    /// Leaves room for the list's scroll bar.
    void setBesideScrollBar(bool beside);

Q_SIGNALS:
    void opened();

private:
    std::size_t m_place = 0;
    QString m_timestamp;
    AgentLabel *m_moment;
    AgentLabel *m_label;
    Button *m_open;
    QBoxLayout *m_line;
};

} // namespace quillfen
