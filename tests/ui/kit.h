// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/style/housestyle.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QWidget>

/// What the tests of the kit share: the look of the house, and pictures of widgets at any scale.
namespace kit {

inline void wearHouseLook()
{
    static const bool worn = [] {
        quillfen::applyHouseLook(*static_cast<QApplication *>(QCoreApplication::instance()));
        return true;
    }();
    Q_UNUSED(worn)
}

/// The widget as it looks on a screen of that scale, on `ground`.
inline QImage picture(QWidget &widget, qreal scale = 1.0, const QColor &ground = Qt::white)
{
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(ground);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// The colour at a place in device-independent pixels.
inline QColor colourAt(const QImage &image, qreal x, qreal y)
{
    const qreal scale = image.devicePixelRatio();
    return image.pixelColor(static_cast<int>(x * scale), static_cast<int>(y * scale));
}

/// How many device pixels have exactly this colour.
inline int count(const QImage &image, const QColor &colour)
{
    int found = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            found += image.pixelColor(x, y) == colour ? 1 : 0;
        }
    }
    return found;
}

} // namespace kit
