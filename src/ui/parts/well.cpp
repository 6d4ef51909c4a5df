// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/well.h"

#include "ui/paint/paint.h"
#include "ui/theme.h"

#include <QPainter>

namespace quillfen {

void Well::paintEvent(QPaintEvent *)
{
    constexpr qreal radius = 6.0;
    QPainter painter(this);
    paintSurface(painter, rect(), radius, Theme::bg, Theme::line);
}

} // namespace quillfen
