// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace quillfen {

/// `rect` moved and sized to whole device pixels of the painter, so that edges are crisp at every scale.
[[nodiscard]] QRectF snapped(const QPainter &painter, const QRectF &rect);

/// A rounded surface with a line inside its edge. Either colour may be invalid: nothing is painted for it.
void paintSurface(QPainter &painter, const QRectF &rect, qreal radius, const QColor &fill, const QColor &border = {},
                  qreal borderWidth = 1.0);

/// A straight hairline, `rect.height()` or `rect.width()` being its thickness, on whole device pixels.
void paintHairline(QPainter &painter, const QRectF &rect, const QColor &colour);

/// `over` laid upon `under` at `share` (0 to 1).
[[nodiscard]] QColor blended(const QColor &under, const QColor &over, qreal share);

} // namespace quillfen
