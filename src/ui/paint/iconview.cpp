// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/iconview.h"

#include <QPainter>

namespace quillfen {

IconView::IconView(Icon icon, int size, const QColor &colour, QWidget *parent)
    : QWidget(parent), m_icon(icon), m_size(size), m_colour(colour)
{
    setFixedSize(size, size);
}

void IconView::setIcon(Icon icon, const QColor &colour)
{
    if (icon != m_icon || colour != m_colour) {
        m_icon = icon;
        m_colour = colour;
        update();
    }
}

void IconView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintIcon(painter, m_icon, rect(), m_colour);
}

} // namespace quillfen
