// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/keyrow.h"

#include "shell/window/keymap.h"
#include "ui/accessible.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/text/paragraph.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QPainter>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int rowHeight = 24;
constexpr int rowRadius = 6;
constexpr int focusWidth = 2;
constexpr int capHeight = 18;
constexpr int capPadding = 6;
constexpr int capRadius = 4;
constexpr int capGap = 4;
constexpr int wordsGap = 12;
constexpr int shortestWords = 60;

int capWidth(const QString &key)
{
    const int text = QFontMetrics(font(Type::Mono)).horizontalAdvance(key);
    return std::max(text + 2 * capPadding, scaled(capHeight));
}

} // namespace

KeyRow::KeyRow(const KeyEntry &entry, QWidget *parent) : QWidget(parent), m_words(entry.words)
{
    for (const QKeySequence &keys : entry.keys) {
        m_keys.append(keys.toString(QKeySequence::NativeText));
    }
    setAccessible(this, QAccessible::ListItem, spokenLine(entry));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setProperty("ownFocus", true);
}

int KeyRow::capsWidth() const
{
    int width = 0;
    for (const QString &key : m_keys) {
        width += capWidth(key) + capGap;
    }
    return width - capGap;
}

QSize KeyRow::sizeHint() const
{
    const int words = QFontMetrics(quillfen::font(Type::Body)).horizontalAdvance(m_words) + 1;
    return {words + wordsGap + capsWidth() + 2 * keyRowPadding, scaled(rowHeight)};
}

QSize KeyRow::minimumSizeHint() const
{
    return {scaled(shortestWords) + wordsGap + capsWidth() + 2 * keyRowPadding, scaled(rowHeight)};
}

void KeyRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    int left = width() - keyRowPadding - capsWidth();
    const QRectF words(keyRowPadding, 0, left - wordsGap - keyRowPadding, height());
    Paragraph line;
    line.text = m_words;
    setToolTip(isElided(line, qFloor(words.width())) ? m_words : QString());
    paintParagraph(painter, line, mirrored(*this, words), Theme::heading);

    painter.setFont(quillfen::font(Type::Mono));
    const int high = scaled(capHeight);
    for (const QString &key : m_keys) {
        const QRectF cap = mirrored(*this, QRect(left, (height() - high) / 2, capWidth(key), high));
        paintSurface(painter, cap, capRadius, Theme::panel2, Theme::line);
        painter.setPen(Theme::heading);
        drawLine(painter, cap, Qt::AlignCenter, key);
        left += capWidth(key) + capGap;
    }
    if (hasFocus()) {
        paintSurface(painter, rect(), rowRadius, {}, Theme::ok, focusWidth);
    }
}

} // namespace quillfen
