// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/commandrow.h"

#include "ui/accessible.h"
#include "ui/paint/direction.h"
#include "ui/paint/icons.h"
#include "ui/paint/paint.h"
#include "ui/text/label.h"
#include "ui/text/paragraph.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int rowHeight = 32;
constexpr int padding = 12;
constexpr int pictureSize = 16;

} // namespace

CommandRow::CommandRow(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setProperty("focusRadius", 6);
}

void CommandRow::setLine(const QString &line, const QString &spoken)
{
    m_line = line;
    setAccessible(this, QAccessible::Button, tr("Copy the line: %1").arg(spoken));
    setToolTip(spoken.toHtmlEscaped());
    update();
}

void CommandRow::setDivided(bool divided)
{
    m_divided = divided;
    update();
}

QSize CommandRow::sizeHint() const
{
    return {rowHeight, scaled(rowHeight)};
}

QSize CommandRow::minimumSizeHint() const
{
    return sizeHint();
}

void CommandRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (isDown() || underMouse()) {
        painter.fillRect(rect(), isDown() ? Theme::line : Theme::panel);
    }
    if (m_divided) {
        paintHairline(painter, QRectF(0, 0, width(), 1), Theme::line);
    }
    const QRectF text = QRectF(rect()).adjusted(padding, 0, -(2 * padding + pictureSize), 0);
    Paragraph paragraph;
    paragraph.text = madeVisible(m_line);
    paragraph.type = Type::Mono;
    paintParagraph(painter, paragraph, mirrored(*this, text), Theme::heading);
    const QRectF icon(width() - padding - pictureSize, (height() - pictureSize) / 2.0, pictureSize, pictureSize);
    paintIcon(painter, Icon::Copy, mirrored(*this, icon), underMouse() ? Theme::heading : Theme::text);
}

void CommandRow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}

} // namespace quillfen
