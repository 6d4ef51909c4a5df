// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QBoxLayout;

namespace quillfen {

/// A panel of a board: a title band, body rows with hairlines between them, and a foot band. Parts without content take
/// no room. Only `Theme::heading` is readable on the bands.
class Card final : public QWidget {
    Q_OBJECT

public:
    explicit Card(bool dark = false, QWidget *parent = nullptr);

    /// The title band, left to right: 44 high, 52 while it holds buttons.
    [[nodiscard]] QBoxLayout *band() const noexcept { return m_bandLayout; }
    /// Appends a row to the body, edge to edge. A hidden row takes its hairline along.
    void addRow(QWidget *row);
    /// The foot band, left to right.
    [[nodiscard]] QBoxLayout *foot() const noexcept { return m_footLayout; }

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    QWidget *m_band;
    QWidget *m_body;
    QWidget *m_foot;
    QBoxLayout *m_bandLayout;
    QBoxLayout *m_bodyLayout;
    QBoxLayout *m_footLayout;
    bool m_dark;
};

} // namespace quillfen
