// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/momentbubble.h"

#include "ui/accessible.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <chrono>

namespace quillfen {

namespace {

using namespace std::chrono_literals;

constexpr int radius = 6;
constexpr int sidePadding = 8;
constexpr int linePadding = 4;

/// Long enough to read it after the last step.
constexpr auto readingTime = 1'500ms;

} // namespace

MomentBubble::MomentBubble(QWidget *owner) : QWidget(owner->window()), m_owner(owner)
{
    setRole(this, QAccessible::ToolTip);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    m_hide.setSingleShot(true);
    connect(&m_hide, &QTimer::timeout, this, &QWidget::hide);
    hide();
}

void MomentBubble::showAt(const QString &text, QPointF foot, qreal left, qreal right)
{
    m_hide.stop();
    if (parentWidget() != m_owner->window()) {
        setParent(m_owner->window()); // the owner was put into another window since
    }
    if (m_text != text) {
        m_text = text;
        setAccessibleName(text);
        update();
    }
    const QFontMetrics metrics(quillfen::font(Type::Caption));
    const int wide = metrics.horizontalAdvance(m_text) + 2 * sidePadding;
    const int high = lineHeight(Type::Caption) + 2 * linePadding;
    const int furthest = std::max(qRound(left), qRound(right) - wide);
    const int x = std::clamp(qRound(foot.x() - wide / 2.0), qRound(left), furthest);
    const QPoint place = m_owner->mapTo(parentWidget(), QPoint(x, qRound(foot.y()) - high));
    setGeometry(QRect(place, QSize(wide, high)));
    if (!isVisible()) {
        raise();
        show();
    }
}

void MomentBubble::hideSoon()
{
    m_hide.start(readingTime);
}

void MomentBubble::paintEvent(QPaintEvent *)
{
    // Without the shadow of other tooltips, which nobody sees on the dark card.
    QPainter painter(this);
    paintSurface(painter, rect(), radius, Theme::dPanel, Theme::dLine);
    painter.setFont(quillfen::font(Type::Caption));
    painter.setPen(Theme::dBright);
    drawLine(painter, rect(), Qt::AlignCenter, m_text);
}

void MomentBubble::hideEvent(QHideEvent *event)
{
    m_hide.stop();
    QWidget::hideEvent(event);
}

} // namespace quillfen
