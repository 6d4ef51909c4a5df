// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/toggle.h"

#include "ui/accessible.h"
#include "ui/paint/paint.h"
#include "ui/text/agenttext.h"
#include "ui/text/label.h"
#include "ui/text/paragraph.h"
#include "ui/text/tooltip.h"
#include "ui/theme.h"

#include <QHelpEvent>
#include <QPainter>

#include <algorithm>

namespace quillfen {

namespace {

constexpr QSize switchSize{36, 20};
constexpr int knob = 14;
constexpr int gap = 12;
constexpr int captionGap = 2;
constexpr int widestCaption = 380;

/// The text's line is as high as the switch, and a row without caption as high as a hand needs. So is the bare switch.
constexpr int rowHeight = 28;
constexpr QSize bareSize{switchSize.width(), rowHeight};

Paragraph title(const QAbstractButton &toggle)
{
    return {.text = lineOfAgentText(toggle.text()), .type = Type::BodyMedium};
}

} // namespace

Toggle::Toggle(const QString &text, const QString &caption, QWidget *parent)
    : QAbstractButton(parent), m_caption(new AgentLabel(caption, Type::Caption, Theme::text, this))
{
    setText(text);
    setShortcut({}); // an "&" in a name is no mnemonic
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setRole(this, QAccessible::CheckBox);
    if (!text.isEmpty()) {
        setAccessibleName(madeVisible(text));
    }
    setProperty("focusRadius", text.isEmpty() ? rowHeight / 2 : 6);
    m_caption->setMaximumLines(6);
    m_caption->setAttribute(Qt::WA_TransparentForMouseEvents);
    showCaption();
}

void Toggle::setCaption(const QString &caption)
{
    m_caption->setText(caption);
    showCaption();
}

void Toggle::showCaption()
{
    const bool captioned = !m_caption->text().isEmpty();
    m_caption->setVisible(captioned);
    const bool bare = text().isEmpty();
    QSizePolicy policy(bare ? QSizePolicy::Fixed : QSizePolicy::Expanding,
                       captioned ? QSizePolicy::Maximum : QSizePolicy::Fixed);
    policy.setHeightForWidth(captioned);
    setSizePolicy(policy);
    updateGeometry();
}

int Toggle::textWidth() const
{
    return std::max(0, width() - switchSize.width() - gap);
}

int Toggle::captionWidth(int width) const
{
    return std::clamp(width - switchSize.width() - gap, 1, widestCaption);
}

QSize Toggle::sizeHint() const
{
    if (text().isEmpty()) {
        return bareSize;
    }
    const int caption = m_caption->isHidden() ? 0 : std::min(m_caption->sizeHint().width(), widestCaption);
    const int wide = std::max(naturalWidth(title(*this), widestCaption), caption) + gap + switchSize.width();
    return {wide, heightForWidth(wide)};
}

QSize Toggle::minimumSizeHint() const
{
    if (text().isEmpty()) {
        return bareSize;
    }
    return {switchSize.width() + gap + 40, scaled(rowHeight)};
}

bool Toggle::hasHeightForWidth() const
{
    return !m_caption->isHidden();
}

int Toggle::heightForWidth(int width) const
{
    if (text().isEmpty()) {
        return bareSize.height();
    }
    if (m_caption->isHidden()) {
        return scaled(rowHeight);
    }
    return lineHeight(Type::BodyMedium) + captionGap + m_caption->heightForWidth(captionWidth(width));
}

void Toggle::resizeEvent(QResizeEvent *event)
{
    QAbstractButton::resizeEvent(event);
    const int above = lineHeight(Type::BodyMedium) + captionGap;
    const int wide = captionWidth(width());
    const int left = isRightToLeft() ? width() - wide : 0;
    m_caption->setGeometry(left, above, wide, std::max(0, height() - above));
}

void Toggle::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const int line = m_caption->isHidden() ? height() : lineHeight(Type::BodyMedium);
    const bool mirrored = isRightToLeft();
    const QRectF text(mirrored ? switchSize.width() + gap : 0, 0, textWidth(), line);
    if (!this->text().isEmpty()) {
        paintParagraph(painter, title(*this), text, isEnabled() ? Theme::heading : Theme::muted);
    }
    const QRectF track(mirrored ? 0 : width() - switchSize.width(), (line - switchSize.height()) / 2.0,
                       switchSize.width(), switchSize.height());
    QColor fill = isChecked() ? Theme::ok : Theme::muted;
    if (!isEnabled()) {
        fill = Theme::line;
    } else if (isDown() || underMouse()) {
        fill = blended(fill, Theme::heading, isDown() ? 0.25 : 0.12);
    }
    paintSurface(painter, track, switchSize.height() / 2.0, fill);
    constexpr qreal inset = (switchSize.height() - knob) / 2.0;
    const qreal x = isChecked() != mirrored ? track.right() - inset - knob : track.left() + inset;
    paintSurface(painter, QRectF(x, track.top() + inset, knob, knob), knob / 2.0, Theme::bg);
}

bool Toggle::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const bool elided = isElided(title(*this), textWidth());
        showPlainToolTip(static_cast<QHelpEvent *>(event)->globalPos(), elided ? text() : QString(), this);
        return true;
    }
    return QAbstractButton::event(event);
}

} // namespace quillfen
