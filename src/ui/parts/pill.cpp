// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/pill.h"

#include "ui/accessible.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/text/agenttext.h"
#include "ui/text/tooltip.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int padding = 8;
constexpr int widest = 240;

} // namespace

Pill::Pill(const QString &text, const QColor &bg, const QColor &fg, QWidget *parent)
    : QWidget(parent), m_text(text), m_bg(bg), m_fg(fg)
{
    setFont(quillfen::font(Type::Micro));
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setAccessible(this, QAccessible::StaticText, madeVisible(text));
}

void Pill::setText(const QString &text)
{
    if (m_text == text) {
        return;
    }
    m_text = text;
    setAccessibleName(madeVisible(text));
    updateGeometry();
    update();
}

void Pill::setColours(const QColor &bg, const QColor &fg)
{
    if (m_bg == bg && m_fg == fg) {
        return;
    }
    m_bg = bg;
    m_fg = fg;
    update();
}

void Pill::setOutlined(bool outlined)
{
    if (m_outlined == outlined) {
        return;
    }
    m_outlined = outlined;
    update();
}

QString Pill::shownText() const
{
    return lineOfAgentText(m_text);
}

QSize Pill::sizeHint() const
{
    return {std::min(fontMetrics().horizontalAdvance(shownText()) + 2 * padding + 1, scaled(widest)), scaled(20)};
}

QSize Pill::minimumSizeHint() const
{
    return sizeHint();
}

void Pill::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const qreal radius = height() / 2.0;
    paintSurface(painter, rect(), radius, m_bg, m_outlined ? QColor(Theme::line) : QColor());
    painter.setPen(m_fg);
    const QRect room = rect().adjusted(padding, 0, -padding, 0);
    drawLine(painter, room, Qt::AlignCenter, fontMetrics().elidedText(shownText(), Qt::ElideRight, room.width() + 1));
}

bool Pill::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const bool elided = fontMetrics().horizontalAdvance(shownText()) > width() - 2 * padding + 1;
        showPlainToolTip(static_cast<QHelpEvent *>(event)->globalPos(), elided ? m_text : QString(), this);
        return true;
    }
    return QWidget::event(event);
}

} // namespace quillfen
