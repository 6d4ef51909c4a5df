// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/listrow.h"

#include "ui/paint/paint.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QPainter>

namespace quillfen {

void nameRowButton(QAbstractButton *button, const QString &row)
{
    button->setAccessibleName(QStringLiteral("%1, %2").arg(button->text(), madeVisible(row)));
}

void paintRowDivider(QWidget *row)
{
    if (row->y() > 0) {
        QPainter painter(row);
        paintHairline(painter, QRectF(0, 0, row->width(), 1), Theme::line);
    }
}

} // namespace quillfen
