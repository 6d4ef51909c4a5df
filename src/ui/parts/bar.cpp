// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/bar.h"

#include "ui/accessible.h"
#include "ui/paint/paint.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quillfen {

namespace {

double clamped(double fraction)
{
    return std::isfinite(fraction) ? std::clamp(fraction, 0.0, 1.0) : 0.0;
}

} // namespace

Bar::Bar(double fraction, const QColor &track, const QColor &fill, int height, QWidget *parent)
    : QWidget(parent), m_fraction(clamped(fraction)), m_track(track), m_fill(fill), m_height(height)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setRole(this, QAccessible::ProgressBar);
    setAccessibleValue(this, m_words, m_fraction);
}

void Bar::setFraction(double fraction)
{
    if (clamped(fraction) == m_fraction) {
        return;
    }
    m_fraction = clamped(fraction);
    setAccessibleValue(this, m_words, m_fraction);
    update();
}

void Bar::setValueText(const QString &words)
{
    m_words = words;
    setAccessibleValue(this, words, m_fraction);
}

void Bar::setFill(const QColor &fill)
{
    if (m_fill == fill) {
        return;
    }
    m_fill = fill;
    update();
}

QSize Bar::sizeHint() const
{
    return {120, m_height};
}

QSize Bar::minimumSizeHint() const
{
    return {m_height, m_height};
}

void Bar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const qreal radius = m_height / 2.0;
    const QRectF track(0, (height() - m_height) / 2.0, width(), m_height);
    paintSurface(painter, track, radius, m_track);
    if (m_fraction <= 0.0) {
        return;
    }
    QRectF filled = track;
    filled.setWidth(std::max<qreal>(m_height, m_fraction * width()));
    if (isRightToLeft()) {
        filled.moveRight(track.right());
    }
    paintSurface(painter, filled, radius, m_fill);
}

} // namespace quillfen
