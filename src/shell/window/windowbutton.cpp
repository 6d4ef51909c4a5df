// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/windowbutton.h"

#include "shell/mainview/sidebar.h"
#include "ui/accessible.h"
#include "ui/controls/enterkey.h"
#include "ui/style/hoverfade.h"
#include "ui/theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace quillfen {

namespace {

constexpr QSize buttonSize{32, 28};
constexpr int radius = 6;
constexpr int glyphSize = 16;

} // namespace

WindowButton::WindowButton(Icon icon, const QString &name, Kind kind, QWidget *parent)
    : QAbstractButton(parent), m_icon(icon), m_kind(kind), m_hover(new HoverFade(this))
{
    setFocusPolicy(Qt::TabFocus);
    setFixedSize(buttonSize);
    setProperty("focusRadius", radius);
    setRole(this, QAccessible::PushButton);
    setPicture(icon, name);
}

void WindowButton::setPicture(Icon icon, const QString &name)
{
    m_icon = icon;
    setAccessibleName(name);
    setToolTip(name);
    update();
}

QSize WindowButton::sizeHint() const
{
    return buttonSize;
}

bool WindowButton::standsOnSidebar() const
{
    const auto *const sidebar = window()->findChild<Sidebar *>();
    return sidebar != nullptr && sidebar->isVisible() &&
           sidebar->rect().contains(sidebar->mapFrom(window(), mapTo(window(), rect().center())));
}

void WindowButton::paintEvent(QPaintEvent *)
{
    const bool closes = m_kind == Kind::Close;
    const bool dark = standsOnSidebar();
    const auto hover = static_cast<float>(m_hover->share());
    QColor fill = Theme::faded(closes ? Theme::danger : dark ? Theme::dPanel2 : Theme::panel, hover);
    if (isDown()) {
        fill = closes ? Theme::dangerText : dark ? Theme::dLine : Theme::line;
    }

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect(), radius, radius);
    const QRectF glyph((width() - glyphSize) / 2.0, (height() - glyphSize) / 2.0, glyphSize, glyphSize);
    const QColor plain = dark ? Theme::dText : Theme::text;
    paintIcon(painter, m_icon, glyph, closes && (isDown() || hover > 0.5F) ? Theme::bg : plain);
}

void WindowButton::focusInEvent(QFocusEvent *event)
{
    setProperty("darkSurface", standsOnSidebar()); // for the focus ring
    QAbstractButton::focusInEvent(event);
}

void WindowButton::keyPressEvent(QKeyEvent *event)
{
    if (!pressByEnter(*this, *event)) {
        QAbstractButton::keyPressEvent(event);
    }
}

} // namespace quillfen
