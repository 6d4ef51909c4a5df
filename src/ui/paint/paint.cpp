// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/paint.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace quillfen {
namespace {

/// `width` as whole device pixels, at least one, in the painter's own measure.
qreal onPixels(const QPainter &painter, qreal width)
{
    const qreal scale = painter.deviceTransform().m11();
    return std::max(1.0, std::floor(width * scale + 0.01)) / scale;
}

} // namespace

QRectF snapped(const QPainter &painter, const QRectF &rect)
{
    // Turned painters have no whole pixels to meet; ours only move and scale.
    const QTransform &device = painter.deviceTransform();
    const QRectF there = device.mapRect(rect);
    const QPointF topLeft(std::round(there.left()), std::round(there.top()));
    const QPointF bottomRight(std::round(there.right()), std::round(there.bottom()));
    return device.inverted().mapRect(QRectF(topLeft, bottomRight));
}

void paintSurface(QPainter &painter, const QRectF &rect, qreal radius, const QColor &fill, const QColor &border,
                  qreal borderWidth)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = snapped(painter, rect);
    painter.setPen(Qt::NoPen);
    if (fill.isValid()) {
        painter.setBrush(fill);
        painter.drawRoundedRect(area, radius, radius);
    }
    if (border.isValid()) {
        // A ring of two outlines instead of a pen: as wide at every scale, with no half pixels at fractional ones.
        const qreal width = onPixels(painter, borderWidth);
        const QRectF inner = area.adjusted(width, width, -width, -width);
        const qreal innerRadius = std::max(0.0, radius - width);
        QPainterPath ring;
        ring.setFillRule(Qt::OddEvenFill);
        ring.addRoundedRect(area, radius, radius);
        ring.addRoundedRect(inner, innerRadius, innerRadius);
        painter.fillPath(ring, border);
    }
    painter.restore();
}

void paintHairline(QPainter &painter, const QRectF &rect, const QColor &colour)
{
    QRectF area = snapped(painter, rect);
    if (rect.height() <= 1.0) {
        area.setHeight(onPixels(painter, 1.0));
    }
    if (rect.width() <= 1.0) {
        area.setWidth(onPixels(painter, 1.0));
    }
    painter.fillRect(area, colour);
}

QColor blended(const QColor &under, const QColor &over, qreal share)
{
    const auto mix = [share](int from, int to) { return static_cast<int>(std::lround(from + (to - from) * share)); };
    return {mix(under.red(), over.red()), mix(under.green(), over.green()), mix(under.blue(), over.blue()),
            mix(under.alpha(), over.alpha())};
}

} // namespace quillfen
