// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/shadow.h"

#include "ui/theme.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace quillfen {

namespace {

/// One box blur along every row of a square of `side`, its sides swapped on the way, so that two calls blur both ways.
void blurAndTranspose(std::vector<int> &square, int side, int radius)
{
    std::vector<int> turned(square.size());
    const int width = 2 * radius + 1;
    for (int y = 0; y < side; ++y) {
        int sum = 0;
        const auto at = [&](int x) { return x < 0 || x >= side ? 0 : square[static_cast<std::size_t>(y * side + x)]; };
        for (int x = -radius; x < radius; ++x) {
            sum += at(x);
        }
        for (int x = 0; x < side; ++x) {
            sum += at(x + radius);
            turned[static_cast<std::size_t>(x * side + y)] = sum / width;
            sum -= at(x - radius);
        }
    }
    square.swap(turned);
}

/// The shadow of a rounded square, large enough that its middle row and column are those of any larger box.
QPixmap shadowPixmap(int box, int reach, qreal radius, qreal sigma, float strength)
{
    const int side = box + 2 * reach;
    QImage shape(side, side, QImage::Format_ARGB32_Premultiplied);
    shape.fill(Qt::transparent);
    {
        QPainter painter(&shape);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.drawRoundedRect(QRectF(reach, reach, box, box), radius, radius);
    }
    // Three box blurs are a Gaussian to the eye; the small factor keeps the divisions from losing the soft end.
    constexpr int precision = 64;
    std::vector<int> alpha(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            alpha[static_cast<std::size_t>(y * side + x)] = qAlpha(shape.pixel(x, y)) * precision;
        }
    }
    const int blurRadius = std::max(1, static_cast<int>(std::lround(sigma * 0.94)));
    for (int pass = 0; pass < 6; ++pass) {
        blurAndTranspose(alpha, side, blurRadius);
    }
    const QColor colour = Theme::dBg;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const int share = static_cast<int>(
                std::lround(static_cast<float>(alpha[static_cast<std::size_t>(y * side + x)]) / precision * strength));
            shape.setPixel(x, y, qPremultiply(qRgba(colour.red(), colour.green(), colour.blue(), share)));
        }
    }
    return QPixmap::fromImage(shape);
}

/// The edges of a box's four bands along one axis, in pixels of the device: reach, corner, middle, corner, reach.
std::array<int, 4> bands(int from, int length, int corner)
{
    return {from, from + corner, from + length - corner, from + length};
}

} // namespace

QMargins Shadow::margins() const
{
    return {blur, std::max(0, blur - offset), blur, blur + offset};
}

void paintShadow(QPainter &painter, const QRectF &box, qreal radius, const Shadow &shadow)
{
    const qreal scale = std::abs(painter.deviceTransform().m11());
    const int reach = static_cast<int>(std::ceil(shadow.blur * scale));
    const QTransform toDevice = painter.deviceTransform();
    const QRect target = toDevice.mapRect(box.translated(0, shadow.offset)).toRect();
    // From this far inside a corner on, the shadow no longer knows of it; a smaller box is its own picture in that
    // axis.
    const int corner = reach + static_cast<int>(std::ceil(radius * scale));
    const int side = std::min(2 * corner + 1, std::min(target.width(), target.height()));
    const int edge = reach + side / 2;
    const QString key =
        QStringLiteral("quillfen-shadow-%1-%2-%3-%4").arg(side).arg(reach).arg(radius).arg(shadow.offset);
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = shadowPixmap(side, reach, radius * scale, shadow.blur * scale / 2, shadow.strength);
        QPixmapCache::insert(key, picture);
    }
    const auto sourceX = bands(0, picture.width(), edge);
    const auto targetX = bands(target.left() - reach, target.width() + 2 * reach, edge);
    const auto targetY = bands(target.top() - reach, target.height() + 2 * reach, edge);
    painter.save();
    painter.setTransform(toDevice.inverted(), true);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const QRect part(targetX[column], targetY[row], targetX[column + 1] - targetX[column],
                             targetY[row + 1] - targetY[row]);
            const QRect source(sourceX[column], sourceX[row], std::max(1, sourceX[column + 1] - sourceX[column]),
                               std::max(1, sourceX[row + 1] - sourceX[row]));
            if (!part.isEmpty()) {
                painter.drawPixmap(part, picture, source);
            }
        }
    }
    painter.restore();
}

} // namespace quillfen
