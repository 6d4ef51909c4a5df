// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/hairline.h"

#include "ui/paint/paint.h"
#include "ui/theme.h"

#include <QPainter>

namespace quillfen {

Hairline::Hairline(Qt::Orientation orientation, QWidget *parent) : QWidget(parent), m_colour(Theme::line)
{
    if (orientation == Qt::Horizontal) {
        setFixedHeight(1);
    } else {
        setFixedWidth(1);
    }
}

Hairline::Hairline(const QColor &colour, QWidget *parent) : QWidget(parent), m_colour(colour)
{
    setFixedHeight(1);
}

void Hairline::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintHairline(painter, rect(), m_colour);
}

} // namespace quillfen
