// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/strippainting.h"

#include "boards/timetravel/pointbars.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace quillfen {

namespace {

constexpr int barInset = 14; ///< of the bars, from top and bottom
constexpr int labelGap = 5;
constexpr int labelBaseline = 12;
constexpr qreal disc = 10.0;
constexpr qreal discRing = 2.0;

/// How far a line at `x` from the strip's left edge keeps from top and bottom, to stay within the round corners.
qreal cornerInset(qreal x, qreal width)
{
    const qreal fromEdge = std::clamp(std::min(x, width - x), 0.0, stripRadius);
    const qreal across = stripRadius - fromEdge;
    return stripRadius - std::sqrt(stripRadius * stripRadius - across * across) + 1.0;
}

void paintMarks(QPainter &painter, const QRectF &strip, const TimeScale &scale)
{
    painter.setFont(quillfen::font(Type::MonoSmall));
    painter.setPen(Theme::dMuted);
    const QFontMetricsF metrics(painter.font());
    const std::vector<ScaleMark> marks = scaleMarks();
    const auto placeOf = [&](const ScaleMark &mark) {
        return scale.positionOfAge(static_cast<double>(mark.age.count()));
    };
    for (std::size_t at = 0; at < marks.size(); ++at) {
        const ScaleMark &mark = marks[at];
        const double x = placeOf(mark);
        const qreal inset = cornerInset(x, strip.width());
        paintHairline(painter, QRectF(strip.left() + x, strip.top() + inset, 1, strip.height() - 2 * inset),
                      Theme::dLine);
        // A label that would run into the next mark is left out: its line alone still tells the scale.
        const double end = at + 1 < marks.size() ? placeOf(marks[at + 1]) : strip.width();
        if (std::round(x) + labelGap + metrics.horizontalAdvance(mark.label) < end) {
            drawLine(painter, QPointF(strip.left() + std::round(x) + labelGap, strip.top() + scaled(labelBaseline)),
                     mark.label);
        }
    }
}

/// One row of pixels holds the bars of all columns, and is drawn as high as they are.
void paintBars(QPainter &painter, const QRectF &strip, const std::vector<float> &coverage)
{
    if (coverage.empty()) {
        return;
    }
    QImage columns(static_cast<int>(coverage.size()), 1, QImage::Format_ARGB32_Premultiplied);
    auto *const pixels = reinterpret_cast<QRgb *>(columns.scanLine(0));
    for (std::size_t column = 0; column < coverage.size(); ++column) {
        pixels[column] = qPremultiply(Theme::faded(Theme::accent, coverage[column]).rgba());
    }
    const qreal width = static_cast<qreal>(coverage.size()) / painter.deviceTransform().m11();
    painter.drawImage(QRectF(strip.left(), strip.top() + barInset, width, strip.height() - 2 * barInset), columns,
                      QRectF(columns.rect()));
}

} // namespace

void paintStrip(QPainter &painter, const QRectF &strip, const TimeScale &scale, std::span<const std::int64_t> moments)
{
    paintSurface(painter, strip, stripRadius, Theme::dBg, Theme::dLine);
    paintMarks(painter, strip, scale);
    paintBars(painter, strip, barCoverage(moments, scale, painter.deviceTransform().m11()));
}

void paintStripMarker(QPainter &painter, const QRectF &strip, qreal x)
{
    // On whole pixels of the screen, so that it is crisp wherever it stops.
    const qreal pixelRatio = painter.deviceTransform().m11();
    const qreal middle = std::round(x * pixelRatio) / pixelRatio;
    const qreal inset = cornerInset(middle - strip.left(), strip.width());
    const QRectF line(middle - 1, strip.top() + inset, 2, strip.height() - 2 * inset);
    // Where bars stand close together they are of the marker's own colour.
    painter.fillRect(snapped(painter, line.adjusted(-1, 0, 1, 0)), Theme::dBg);
    painter.fillRect(snapped(painter, line), Theme::accent);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QPointF centre(middle, strip.center().y());
    painter.setBrush(Theme::dBg);
    painter.drawEllipse(centre, disc / 2 + discRing, disc / 2 + discRing);
    painter.setBrush(Theme::accent);
    painter.drawEllipse(centre, disc / 2, disc / 2);
}

} // namespace quillfen
