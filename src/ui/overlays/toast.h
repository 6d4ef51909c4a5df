// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace quillfen {

/// The outcome of an action, at the bottom centre of its window. Takes no focus; announced once per text. As wide as
/// its line, at most the window less 96, then elided with the whole text in its tooltip. The window owns it.
class Toast final : public QWidget {
    Q_OBJECT

public:
    explicit Toast(QWidget *window);

    [[nodiscard]] const QString &text() const noexcept { return m_text; }
    /// Shows `text`; an empty one takes the toast away. The same text again changes nothing.
    void setText(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();
    void fadeTo(qreal opacity);
    void setOpacity(qreal opacity);

    QString m_text;
    QString m_line; ///< what is painted; outlives `m_text` while fading out
    class ToastShadow *m_shadow;
    QVariantAnimation m_fade;
    qreal m_opacity = 0.0;
};

} // namespace quillfen
