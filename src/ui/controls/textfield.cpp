// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/textfield.h"

#include "ui/paint/paint.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QEvent>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int iconSize = 16;
constexpr int iconGap = 8;

/// What QLineEdit keeps free of its own at both ends.
constexpr int lineEditMargin = 2;

} // namespace

TextField::TextField(const QString &accessibleName, const QString &placeholder, int height, QWidget *parent)
    : QLineEdit(parent), m_height(height)
{
    setAccessibleName(accessibleName);
    setPlaceholderText(placeholder);
    setFont(quillfen::font(Type::Body));
    setFrame(false);
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_MacShowFocusRect, false);
    setProperty("ownFocus", true);
    setFixedHeight(scaled(height));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    applyColours();
    applyMargins();
}

void TextField::setInvalid(bool invalid)
{
    if (m_invalid == invalid) {
        return;
    }
    m_invalid = invalid;
    update();
}

void TextField::setDark(bool dark)
{
    m_dark = dark;
    setProperty("darkSurface", dark);
    applyColours();
}

void TextField::setLeadingIcon(Icon icon)
{
    m_icon = icon;
    applyMargins();
    update();
}

QSize TextField::sizeHint() const
{
    return {200, height()};
}

int TextField::padding() const
{
    if (m_height <= 24) {
        return 8;
    }
    return m_height >= 36 ? 12 : 10;
}

void TextField::applyMargins()
{
    // One pixel more than the padding: the border's, so that a thicker border has its room already.
    const int side = padding() + 1 - lineEditMargin;
    const int withIcon = side + (m_icon ? iconSize + iconGap : 0);
    setTextMargins(isRightToLeft() ? QMargins(side, 0, withIcon, 0) : QMargins(withIcon, 0, side, 0));
}

void TextField::applyColours()
{
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Text, m_dark ? Theme::dBright : Theme::heading);
    colours.setColor(QPalette::PlaceholderText, m_dark ? Theme::dText : Theme::text);
    colours.setColor(QPalette::Disabled, QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Disabled, QPalette::Text, m_dark ? Theme::dMuted : Theme::muted);
    colours.setColor(QPalette::Disabled, QPalette::PlaceholderText, m_dark ? Theme::dMuted : Theme::muted);
    setPalette(colours);
}

void TextField::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        update();
    } else if (event->type() == QEvent::LayoutDirectionChange) {
        applyMargins();
    }
}

void TextField::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(this);
        const bool on = isEnabled();
        QColor border = m_dark ? Theme::dMuted : Theme::muted;
        if (!on) {
            border = m_dark ? Theme::dLine : Theme::line;
        } else if (m_invalid) {
            border = Theme::danger;
        } else if (hasFocus()) {
            border = m_dark ? Theme::accent : Theme::ok;
        } else if (underMouse()) {
            border = m_dark ? Theme::dText : Theme::text;
        }
        QColor fill = m_dark ? Theme::dPanel : Theme::bg;
        if (!on) {
            fill = QColor();
        }
        paintSurface(painter, rect(), 6, fill, border, on && hasFocus() ? 2 : 1);
        if (m_icon) {
            const int x = isRightToLeft() ? width() - padding() - 1 - iconSize : padding() + 1;
            const QColor colour = on ? (m_dark ? Theme::dText : Theme::text) : (m_dark ? Theme::dMuted : Theme::muted);
            paintIcon(painter, *m_icon, QRectF(x, (height() - iconSize) / 2.0, iconSize, iconSize), colour);
        }
    }
    QLineEdit::paintEvent(event);
}

} // namespace quillfen
