// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractButton>
#include <QString>

namespace quillfen {

/// A command in a well: a click, Enter or Space copies it whole. Where it carries a secret that is hidden elsewhere,
/// its tooltip and its accessible name carry dots instead.
class CommandRow final : public QAbstractButton {
    Q_OBJECT

public:
    explicit CommandRow(QWidget *parent = nullptr);

    /// `spoken` stands for `line` wherever it is not painted.
    void setLine(const QString &line, const QString &spoken);
    [[nodiscard]] const QString &line() const noexcept { return m_line; }
    /// A hairline above, for every line but the first.
    void setDivided(bool divided);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_line;
    bool m_divided = false;
};

} // namespace quillfen
