// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/iconbutton.h"

#include "ui/accessible.h"
#include "ui/controls/enterkey.h"
#include "ui/paint/paint.h"
#include "ui/style/hoverfade.h"
#include "ui/text/tooltip.h"
#include "ui/theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace quillfen {

IconButton::IconButton(Icon icon, const QString &accessibleName, int iconSize, QWidget *parent)
    : QAbstractButton(parent), m_icon(icon), m_iconSize(iconSize), m_hover(new HoverFade(this))
{
    setRole(this, QAccessible::PushButton);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setIcon(icon, accessibleName);
}

void IconButton::setIcon(Icon icon, const QString &accessibleName)
{
    m_icon = icon;
    if (this->accessibleName() != accessibleName) {
        setAccessibleName(accessibleName);
        setToolTip(plainToolTip(accessibleName));
    }
    update();
}

void IconButton::setDark(bool dark)
{
    m_dark = dark;
    setProperty("darkSurface", dark);
    update();
}

QSize IconButton::sizeHint() const
{
    return {28, 28};
}

void IconButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (isDown()) {
        paintSurface(painter, rect(), 6, m_dark ? Theme::dPanel2 : Theme::line);
    } else if (isEnabled()) {
        paintSurface(painter, rect(), 6,
                     Theme::faded(m_dark ? Theme::dLine : Theme::panel, static_cast<float>(m_hover->share())));
    }
    const QColor enabled = m_dark ? Theme::dText : Theme::text;
    const QColor disabled = m_dark ? Theme::dMuted : Theme::muted;
    const QRectF place(0, 0, m_iconSize, m_iconSize);
    paintIcon(painter, m_icon, place.translated(QRectF(rect()).center() - place.center()),
              isEnabled() ? enabled : disabled);
}

void IconButton::keyPressEvent(QKeyEvent *event)
{
    if (!pressByEnter(*this, *event)) {
        QAbstractButton::keyPressEvent(event);
    }
}

} // namespace quillfen
