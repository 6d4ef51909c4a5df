// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QVariantAnimation>

#include <chrono>
#include <optional>

class QWidget;

namespace quillfen {

/// Whether the user asked the system for less motion: everything switches at once then. Asked of the system once,
/// without waiting for its answer; until that arrives, motion counts as wanted.
[[nodiscard]] bool reducedMotion();

/// Takes the place of the system's answer; nothing gives it back its say. For tests.
void setReducedMotion(std::optional<bool> reduced);

/// Fades the opacity of one widget with all its children. At rest it costs nothing: the effect is there only while an
/// animation runs. A child of its target.
class Fade final : public QObject {
    Q_OBJECT

public:
    explicit Fade(QWidget *target, std::chrono::milliseconds duration = std::chrono::milliseconds{150});

    /// Shows the target and raises its opacity from where it is to full.
    void fadeIn();
    /// Lowers the opacity, then hides the target and tells `hidden`. A hidden target is left alone.
    void fadeOut();

Q_SIGNALS:
    void shown();
    void hidden();

private:
    void run(qreal to);
    void finish();
    void setOpacity(qreal opacity);

    QWidget *m_target;
    QVariantAnimation m_animation;
    qreal m_opacity = 1.0;
};

/// Call right before what `area` shows is exchanged: its picture lies above the new contents and fades out. Nothing
/// happens while `area` is hidden or motion is unwanted.
void crossFade(QWidget *area, std::chrono::milliseconds duration = std::chrono::milliseconds{200});

} // namespace quillfen
