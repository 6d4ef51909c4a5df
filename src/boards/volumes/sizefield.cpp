// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/sizefield.h"

#include "ui/paint/paint.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QLineEdit>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int padding = 8;
/// What a line edit adds to its text's sides, and behind the text the cursor.
constexpr int ownMargin = 2;
constexpr int cursorRoom = 1;
constexpr int radius = 6;
/// More than any plan holds, so that a size that is too large is answered in words and not by a field that stops.
constexpr int largestSize = 9'999'999;

} // namespace

SizeField::SizeField(const QString &accessibleName, QWidget *parent) : QSpinBox(parent)
{
    setAccessibleName(accessibleName);
    setRange(1, largestSize);
    setSuffix(tr(" GB"));
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setFont(quillfen::font(Type::Heading));
    setAttribute(Qt::WA_Hover);
    setProperty("ownFocus", true);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Text, Theme::heading);
    setPalette(colours);
    lineEdit()->setFrame(false);
    lineEdit()->setTextMargins(padding - ownMargin, 0, padding - ownMargin - cursorRoom, 0);
}

QSize SizeField::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(QStringLiteral("99999") + suffix()) + 2 * padding,
            lineHeight(Type::Heading) + 4};
}

void SizeField::paintEvent(QPaintEvent *)
{
    lineEdit()->setGeometry(rect());
    if (!hasFocus() && !underMouse()) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal width = hasFocus() ? 2.0 : 1.0;
    const QRectF frame = QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter.setBrush(Theme::bg);
    painter.setPen(QPen(hasFocus() ? Theme::ok : Theme::text, width));
    painter.drawRoundedRect(frame, radius, radius);
}

} // namespace quillfen
