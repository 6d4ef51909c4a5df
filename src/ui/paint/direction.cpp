// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/direction.h"

#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace quillfen {

namespace {

/// Sets the painter to the direction of a text for as long as it lives.
class TextDirection final {
public:
    TextDirection(QPainter &painter, const QString &text) : m_painter(painter), m_before(painter.layoutDirection())
    {
        m_painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    }
    ~TextDirection() { m_painter.setLayoutDirection(m_before); }
    Q_DISABLE_COPY_MOVE(TextDirection)

private:
    QPainter &m_painter;
    Qt::LayoutDirection m_before;
};

} // namespace

Qt::LayoutDirection directionOf(const QPainter &painter)
{
    const QPaintDevice *const device = painter.device();
    if (device != nullptr && device->devType() == QInternal::Widget) {
        return static_cast<const QWidget *>(device)->layoutDirection();
    }
    return painter.layoutDirection();
}

QRectF mirrored(const QWidget &widget, const QRectF &part)
{
    if (!widget.isRightToLeft()) {
        return part;
    }
    return {widget.width() - part.right(), part.top(), part.width(), part.height()};
}

void drawLine(QPainter &painter, const QRectF &rect, Qt::Alignment alignment, const QString &text, int flags)
{
    const Qt::Alignment visual = QStyle::visualAlignment(directionOf(painter), alignment) | Qt::AlignAbsolute;
    const TextDirection direction(painter, text);
    painter.drawText(rect, static_cast<int>(visual) | Qt::TextSingleLine | flags, text);
}

void drawLine(QPainter &painter, const QPointF &at, const QString &text)
{
    const TextDirection direction(painter, text);
    painter.drawText(at, text);
}

} // namespace quillfen
