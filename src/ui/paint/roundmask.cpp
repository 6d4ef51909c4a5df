// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/roundmask.h"

#include <QBitmap>
#include <QPainter>
#include <QWidget>

namespace quillfen {

void cutRoundCorners(QWidget *window, qreal radius)
{
    QBitmap shape(window->size());
    shape.clear();
    QPainter painter(&shape);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::color1);
    painter.drawRoundedRect(window->rect(), radius, radius);
    painter.end();
    window->setMask(shape);
}

} // namespace quillfen
