// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/timetravel/timelinestrip.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <vector>

namespace quillfen::test {

/// A strip as the design draws it, each point by itself: the age of the marker and of the points in seconds.
inline QImage designedStrip(QSize strip, double pixelRatio, double marker, const std::vector<double> &points)
{
    constexpr int edge = TimelineStrip::edge;
    const QSizeF whole = strip + QSize(2 * edge, 2 * edge);
    QImage image((whole * pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pixelRatio);
    image.fill(Theme::dBg);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(edge, edge);
    const double w = strip.width();
    const double h = strip.height();
    const auto x = [w](double age) {
        return w - w * std::clamp(std::log(std::max(age, 1.0)) / std::log(7'776'000.0), 0.0, 1.0);
    };
    painter.setPen(QPen(Theme::dLine, 1));
    painter.setBrush(Theme::dBg);
    painter.drawRoundedRect(QRectF(0.5, 0.5, w - 1, h - 1), 12, 12);
    painter.setFont(quillfen::font(Type::MonoSmall));
    const std::vector<std::pair<double, const char *>> marks{
        {2'592'000, "30 d"}, {604'800, "7 d"}, {86'400, "1 d"}, {3'600, "1 h"}, {60, "1 min"}};
    for (const auto &[age, label] : marks) {
        painter.fillRect(QRectF(std::round(x(age) * pixelRatio) / pixelRatio, 1, 1, h - 2), Theme::dLine);
    }
    for (const double age : points) {
        painter.fillRect(QRectF(x(age) - 0.75, 14, 1.5, h - 28), Theme::faded(Theme::accent, 0.75F));
    }
    painter.setPen(Theme::dMuted);
    for (const auto &[age, label] : marks) {
        painter.drawText(QPointF(std::round(x(age)) + 5, 12), QString::fromLatin1(label));
    }
    const double centre = std::round(x(marker) * pixelRatio) / pixelRatio;
    painter.fillRect(QRectF(centre - 1, 1, 2, h - 2), Theme::accent);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::dBg);
    painter.drawEllipse(QPointF(centre, h / 2), 7, 7);
    painter.setBrush(Theme::accent);
    painter.drawEllipse(QPointF(centre, h / 2), 5, 5);
    return image;
}

/// The share of pixels of which a colour is off by more than `tolerance`.
inline double differingShare(const QImage &left, const QImage &right, int tolerance)
{
    if (left.size() != right.size()) {
        return 1.0;
    }
    int differing = 0;
    for (int row = 0; row < left.height(); ++row) {
        for (int column = 0; column < left.width(); ++column) {
            const QColor a = left.pixelColor(column, row);
            const QColor b = right.pixelColor(column, row);
            const int off =
                std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
            differing += off > tolerance ? 1 : 0;
        }
    }
    return static_cast<double>(differing) / (left.width() * left.height());
}

} // namespace quillfen::test
