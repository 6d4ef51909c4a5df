// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/sharetile.h"

#include "ui/accessible.h"
#include "ui/controls/tabstop.h"
#include "ui/paint/icons.h"
#include "ui/paint/paint.h"
#include "ui/text/agenttext.h"
#include "ui/text/paragraph.h"
#include "ui/theme.h"

#include <QPainter>
#include <QStyle>

namespace quillfen {

namespace {

constexpr int radioSize = 16;
constexpr int subtitleGap = 2;

/// From the outer edge, the line included.
constexpr int sidePadding = 13;
constexpr int topPadding = 11;

Paragraph titleOf(const QString &text)
{
    return {.text = lineOfAgentText(text), .type = Type::BodySemibold};
}

Paragraph subtitleOf(const QString &text)
{
    return {.text = lineOfAgentText(text),
            .type = Type::Caption,
            .alignment = Qt::AlignLeft | Qt::AlignTop,
            .maximumLines = 3};
}

} // namespace

ShareTile::ShareTile(const QString &title, const QString &subtitle, QWidget *parent)
    : QAbstractButton(parent), m_title(title), m_subtitle(subtitle)
{
    setCheckable(true);
    setAutoExclusive(true);
    shareTabStop(this);
    setFocusPolicy(Qt::TabFocus);
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred); // tiles of a row share its width evenly
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAttribute(Qt::WA_Hover);
    setProperty("focusRadius", 10);
    setAccessible(this, QAccessible::RadioButton, subtitle.isEmpty() ? title : title + QStringLiteral(", ") + subtitle);
}

QSize ShareTile::sizeHint() const
{
    return {143, heightForWidth(143)};
}

QSize ShareTile::minimumSizeHint() const
{
    return {96, 2 * topPadding + lineHeight(Type::BodySemibold)};
}

bool ShareTile::hasHeightForWidth() const
{
    return true;
}

int ShareTile::heightForWidth(int width) const
{
    const int lines = m_subtitle.isEmpty() ? 0 : lineCount(subtitleOf(m_subtitle), width - 2 * sidePadding);
    return 2 * topPadding + lineHeight(Type::BodySemibold) + subtitleGap + lines * lineHeight(Type::Caption);
}

void ShareTile::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor line = Theme::line;
    if (isEnabled() && isChecked()) {
        line = Theme::accent;
    } else if (isEnabled() && (underMouse() || isDown())) {
        line = Theme::muted;
    }
    const QColor fill = isEnabled() && isDown() ? Theme::panel : Theme::panel2;
    paintSurface(painter, rect(), 10, fill, line, isEnabled() && isChecked() ? 2 : 1);
    const auto mirrored = [this](const QRect &part) { return QStyle::visualRect(layoutDirection(), rect(), part); };
    const int top = lineHeight(Type::BodySemibold);
    const QRect inner = rect().adjusted(sidePadding, topPadding, -sidePadding, -topPadding);
    const QRect title(inner.left(), inner.top(), inner.width() - radioSize - 4, top);
    const QRect radio(inner.right() + 1 - radioSize, inner.top() + (top - radioSize) / 2, radioSize, radioSize);
    const QRect subtitle = inner.adjusted(0, top + subtitleGap, 0, 0);
    const auto colour = [this](const QColor &enabled) { return isEnabled() ? enabled : QColor(Theme::muted); };
    paintParagraph(painter, titleOf(m_title), mirrored(title), colour(Theme::heading));
    paintIcon(painter, isChecked() ? Icon::RadioOn : Icon::RadioOff, mirrored(radio),
              colour(isChecked() ? Theme::ok : Theme::text));
    if (!m_subtitle.isEmpty()) {
        paintParagraph(painter, subtitleOf(m_subtitle), mirrored(subtitle), colour(Theme::text));
    }
}

} // namespace quillfen
