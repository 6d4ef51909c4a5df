// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview/darktextbutton.h"

#include "ui/controls/enterkey.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/text/label.h"
#include "ui/text/tooltip.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QHelpEvent>
#include <QPainter>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int narrowest = 60;
constexpr int underlineGap = 3;

} // namespace

DarkTextButton::DarkTextButton(QWidget *parent) : QAbstractButton(parent), m_type(Type::BodyMedium)
{
    setFont(quillfen::font(m_type));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFocusPolicy(Qt::TabFocus);
    setProperty("darkSurface", true);
    setProperty("focusRadius", 3);
}

void DarkTextButton::setLabel(const QString &label, bool acts)
{
    // "&" is a sign of the label, not a mnemonic.
    const QString visible = madeVisible(label);
    setText(QString(visible).replace(u'&', QStringLiteral("&&")));
    setAccessibleName(visible);
    setCursor(acts ? Qt::PointingHandCursor : Qt::ArrowCursor);
    update();
}

void DarkTextButton::setUnderlined(bool underlined)
{
    m_underlined = underlined;
    update();
}

void DarkTextButton::setQuiet()
{
    m_quiet = true;
    m_type = Type::Caption;
    setFont(quillfen::font(m_type));
    setAttribute(Qt::WA_Hover);
    updateGeometry();
}

QSize DarkTextButton::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(accessibleName()) + 1, lineHeight(m_type)};
}

QSize DarkTextButton::minimumSizeHint() const
{
    return {std::min(scaled(narrowest), sizeHint().width()), sizeHint().height()};
}

QString DarkTextButton::shownLabel() const
{
    return fontMetrics().elidedText(accessibleName(), Qt::ElideRight, width());
}

void DarkTextButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(m_quiet && !underMouse() ? Theme::dText : Theme::dBright);
    const QString label = shownLabel();
    drawLine(painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, label);
    if (m_underlined || (m_quiet && underMouse())) {
        const int below = (height() + fontMetrics().ascent() - fontMetrics().descent()) / 2 + underlineGap;
        const QRectF line(0, below, fontMetrics().horizontalAdvance(label), 1);
        paintHairline(painter, mirrored(*this, line), Theme::dBright);
    }
}

void DarkTextButton::keyPressEvent(QKeyEvent *event)
{
    if (!pressByEnter(*this, *event)) {
        QAbstractButton::keyPressEvent(event);
    }
}

bool DarkTextButton::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const bool whole = shownLabel() == accessibleName();
        showPlainToolTip(static_cast<QHelpEvent *>(event)->globalPos(), whole ? toolTip() : accessibleName(), this);
        return true;
    }
    return QAbstractButton::event(event);
}

} // namespace quillfen
