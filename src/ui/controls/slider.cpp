// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/slider.h"

#include "ui/paint/paint.h"
#include "ui/theme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace quillfen {

namespace {

constexpr int knob = 18;
constexpr int track = 4;

/// Higher than the knob: a hand needs it.
constexpr int controlHeight = 28;

} // namespace

Slider::Slider(const QString &accessibleName, QWidget *parent) : QSlider(Qt::Horizontal, parent)
{
    setAccessibleName(accessibleName);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSingleStep(1);
    setPageStep(10);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setProperty("focusRadius", knob / 2);
}

QSize Slider::sizeHint() const
{
    return {200, controlHeight};
}

QSize Slider::minimumSizeHint() const
{
    return {60, controlHeight};
}

qreal Slider::knobCentre() const
{
    const int span = width() - knob;
    return knob / 2.0 + QStyle::sliderPositionFromValue(minimum(), maximum(), sliderPosition(), span, isRightToLeft());
}

int Slider::valueAt(qreal x) const
{
    const int span = width() - knob;
    return QStyle::sliderValueFromPosition(minimum(), maximum(), qRound(x - knob / 2.0), span, isRightToLeft());
}

void Slider::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const qreal centre = knobCentre();
    const QRectF whole(0, (height() - track) / 2.0, width(), track);
    QRectF filled = whole;
    if (isRightToLeft()) {
        filled.setLeft(centre);
    } else {
        filled.setRight(centre);
    }
    paintSurface(painter, whole, track / 2.0, Theme::line);
    paintSurface(painter, filled, track / 2.0, isEnabled() ? Theme::accent : Theme::muted);
    QColor ring = Theme::ok;
    if (!isEnabled()) {
        ring = Theme::muted;
    } else if (isSliderDown() || underMouse()) {
        ring = Theme::okText;
    }
    const QColor fill = isEnabled() && isSliderDown() ? Theme::okBg : Theme::bg;
    paintSurface(painter, QRectF(centre - knob / 2.0, (height() - knob) / 2.0, knob, knob), knob / 2.0, fill, ring, 2);
}

void Slider::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const qreal x = event->position().x();
    setSliderDown(true);
    m_grip = x - knobCentre();
    if (std::abs(m_grip) > knob / 2.0) {
        m_grip = 0.0;
        setSliderPosition(valueAt(x));
    }
    update();
}

void Slider::mouseMoveEvent(QMouseEvent *event)
{
    if (isSliderDown()) {
        setSliderPosition(valueAt(event->position().x() - m_grip));
    }
}

void Slider::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && isSliderDown()) {
        setSliderDown(false);
    }
    update();
}

void Slider::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace quillfen
