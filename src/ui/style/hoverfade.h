// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QVariantAnimation>

class QWidget;

namespace quillfen {

/// How far the look under the pointer has come in: fades over 100 ms, at once where motion is unwanted or the widget is
/// disabled. It follows the pointer by itself and repaints its widget, whose child it is.
class HoverFade final : public QObject {
    Q_OBJECT

public:
    explicit HoverFade(QWidget *widget);

    /// From 0, the look at rest, to 1, the look under the pointer.
    [[nodiscard]] qreal share() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void run(bool inside);

    QWidget *m_widget;
    QVariantAnimation m_animation;
};

} // namespace quillfen
