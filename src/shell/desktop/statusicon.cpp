// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/desktop/statusicon.h"

#include "ui/paint/icons.h"
#include "ui/theme.h"

#include <QPainter>

#include <array>

namespace quillfen {

namespace {

constexpr int size = 16;
/// Panels ask for 16, 22, 24, 32 and 48 pixels; a picture that is stretched to one of them blurs.
constexpr std::array scales{1.0, 1.375, 1.5, 2.0, 3.0};

void clear(QPainter &painter, auto &&draw)
{
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    draw();
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void addDot(QPainter &painter)
{
    const QPointF centre(13.0, 3.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::muted);
    clear(painter, [&] { painter.drawEllipse(centre, 4.0, 4.0); });
    painter.drawEllipse(centre, 2.75, 2.75);
}

void crossOut(QPainter &painter)
{
    const QLineF stroke(1.5, 14.5, 14.5, 1.5);
    clear(painter, [&] {
        painter.setPen(QPen(Theme::muted, 4.0, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(stroke);
    });
    painter.setPen(QPen(Theme::muted, 1.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(stroke);
}

} // namespace

QIcon statusIcon(Overall overall)
{
    QIcon icon;
    for (const qreal scale : scales) {
        QPixmap picture = iconPixmap(Icon::TrayTemplate, size, Theme::muted, scale);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        if (overall == Overall::Uploading) {
            addDot(painter);
        } else if (overall == Overall::EngineStopped) {
            crossOut(painter);
        }
        painter.end();
        picture.setDevicePixelRatio(1.0); // else the bus, which counts in pixels, is told of the first alone
        icon.addPixmap(picture);
    }
    icon.setIsMask(true);
    return icon;
}

} // namespace quillfen
