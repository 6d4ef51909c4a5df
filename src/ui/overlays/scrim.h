// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace quillfen {

/// Dims a whole window below a sheet or a dialog and keeps the mouse from what it covers. The window owns it. Children
/// of the window that carry the property "aboveScrim" (its own controls) stay above it and usable.
class Scrim final : public QWidget {
    Q_OBJECT

public:
    explicit Scrim(QWidget *window);

    /// Fades out, then deletes itself.
    void leave();

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fadeTo(qreal opacity);

    QVariantAnimation m_fade;
    qreal m_opacity = 0.0;
    bool m_leaving = false;
};

/// Raises the children of `window` that carry the property "aboveScrim".
void raiseAboveScrim(QWidget *window);

} // namespace quillfen
