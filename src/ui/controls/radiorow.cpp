// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/radiorow.h"

#include "ui/accessible.h"
#include "ui/controls/tabstop.h"
#include "ui/paint/icons.h"
#include "ui/text/agenttext.h"
#include "ui/text/paragraph.h"
#include "ui/text/tooltip.h"
#include "ui/theme.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStringList>
#include <QStyle>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int radioSize = 18;
constexpr int gap = 12;

/// A value at the right takes what it needs up to this; the title gets the rest.
constexpr int widestValue = 160;

Paragraph titleOf(const QString &text, Type type)
{
    return {.text = lineOfAgentText(text), .type = type};
}

Paragraph captionOf(const QString &text)
{
    return {.text = lineOfAgentText(text), .type = Type::Caption};
}

Paragraph valueOf(const QString &text)
{
    return {.text = lineOfAgentText(text), .type = Type::Body, .alignment = Qt::AlignRight | Qt::AlignVCenter};
}

} // namespace

RadioRow::RadioRow(const QString &title, const QString &caption, QWidget *parent)
    : QAbstractButton(parent), m_title(title), m_caption(caption)
{
    setCheckable(true);
    setAutoExclusive(true);
    shareTabStop(this);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    setRole(this, QAccessible::RadioButton);
    setProperty("focusRadius", 6);
    describe();
}

void RadioRow::setTitle(const QString &title)
{
    m_title = title;
    describe();
}

void RadioRow::setCaption(const QString &caption)
{
    m_caption = caption;
    describe();
}

void RadioRow::setValue(const QString &value)
{
    m_value = value;
    describe();
}

void RadioRow::setTitleType(Type type)
{
    m_titleType = type;
    update();
}

void RadioRow::setSidePadding(int padding)
{
    m_padding = padding;
    update();
}

void RadioRow::describe()
{
    QStringList parts{m_title, m_caption, m_value};
    parts.removeAll(QString());
    setAccessibleName(madeVisible(parts.join(QStringLiteral(", "))));
    updateGeometry();
    update();
}

QSize RadioRow::sizeHint() const
{
    return {320, minimumSizeHint().height()};
}

QSize RadioRow::minimumSizeHint() const
{
    return {2 * m_padding + radioSize + gap + 60, scaled(m_caption.isEmpty() ? 40 : 48)};
}

QRect RadioRow::textRect() const
{
    const int value = m_value.isEmpty() ? 0 : std::min(naturalWidth(valueOf(m_value), widestValue), widestValue) + gap;
    return rect().adjusted(m_padding + radioSize + gap, 0, -m_padding - value, 0);
}

void RadioRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const auto mirrored = [this](const QRect &part) { return QStyle::visualRect(layoutDirection(), rect(), part); };
    const auto colour = [this](const QColor &enabled) { return isEnabled() ? enabled : QColor(Theme::muted); };
    const QRect icon(m_padding, (height() - radioSize) / 2, radioSize, radioSize);
    const bool lively = isChecked() || isDown() || underMouse();
    paintIcon(painter, isChecked() ? Icon::RadioOn : Icon::RadioOff, mirrored(icon),
              colour(lively ? Theme::ok : Theme::text));
    QRect text = textRect();
    const QRect value(text.right() + 1 + gap, 0, width() - m_padding - text.right() - 1 - gap, height());
    if (!m_value.isEmpty()) {
        paintParagraph(painter, valueOf(m_value), mirrored(value), colour(Theme::heading));
    }
    if (!m_caption.isEmpty()) {
        const int lines = lineHeight(Type::Body) + lineHeight(Type::Caption);
        text.setTop((height() - lines) / 2);
        text.setHeight(lineHeight(Type::Body));
        const QRect caption(text.left(), text.bottom() + 1, text.width(), lineHeight(Type::Caption));
        paintParagraph(painter, captionOf(m_caption), mirrored(caption), colour(Theme::text));
    }
    paintParagraph(painter, titleOf(m_title, isChecked() ? Type::BodySemibold : m_titleType), mirrored(text),
                   colour(Theme::heading));
}

bool RadioRow::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const int room = textRect().width();
        const bool elided = isElided(titleOf(m_title, isChecked() ? Type::BodySemibold : m_titleType), room) ||
                            isElided(captionOf(m_caption), room) || isElided(valueOf(m_value), widestValue);
        showPlainToolTip(static_cast<QHelpEvent *>(event)->globalPos(), elided ? accessibleName() : QString(), this);
        return true;
    }
    return QAbstractButton::event(event);
}

} // namespace quillfen
