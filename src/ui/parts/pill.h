// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QWidget>

namespace quillfen {

/// A short label in `fg` on a round `bg`. Wider texts than a pill can carry elide, with the whole in the tooltip.
class Pill final : public QWidget {
    Q_OBJECT

public:
    Pill(const QString &text, const QColor &bg, const QColor &fg, QWidget *parent = nullptr);

    [[nodiscard]] const QString &text() const noexcept { return m_text; }
    void setText(const QString &text);
    void setColours(const QColor &bg, const QColor &fg);
    /// A `Theme::line` around it, where its colour is also that of the surface below.
    void setOutlined(bool outlined);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    [[nodiscard]] QString shownText() const;

    QString m_text;
    QColor m_bg;
    QColor m_fg;
    bool m_outlined = false;
};

} // namespace quillfen
