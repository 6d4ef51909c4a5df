// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/timetravel/timescale.h"

#include <QRectF>

#include <cstdint>
#include <span>

class QPainter;

namespace quillfen {

/// The corners of a strip.
inline constexpr qreal stripRadius = 12.0;

/// Paints a strip without its marker: surface, scale marks with their labels, and a bar for each of the ascending
/// `moments`, in milliseconds since 1970. The work follows the strip's width.
void paintStrip(QPainter &painter, const QRectF &strip, const TimeScale &scale, std::span<const std::int64_t> moments);

/// Paints the marker of the chosen moment at `x`, a line and a disc, which reaches beyond the strip's ends.
void paintStripMarker(QPainter &painter, const QRectF &strip, qreal x);

} // namespace quillfen
