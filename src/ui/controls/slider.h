// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSlider>

namespace quillfen {

/// A horizontal slider. A press on the track takes the knob there at once. Arrow keys step by 1, Page Up and Down by 10
/// unless set otherwise; the wheel is left to the form around it.
class Slider final : public QSlider {
    Q_OBJECT

public:
    explicit Slider(const QString &accessibleName, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    [[nodiscard]] qreal knobCentre() const;
    [[nodiscard]] int valueAt(qreal x) const;

    qreal m_grip = 0.0; ///< from the knob's centre to the pointer while dragging
};

} // namespace quillfen
