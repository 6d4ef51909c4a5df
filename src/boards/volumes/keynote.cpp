// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/keynote.h"

#include "ui/accessible.h"
#include "ui/text/label.h"
#include "ui/text/tooltip.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int widest = 640;
constexpr int leastWidth = 120;

QTextLayout::FormatRange fixedWidth(qsizetype length)
{
    QTextLayout::FormatRange range;
    range.start = 0;
    range.length = static_cast<int>(length);
    range.format.setFont(quillfen::font(Type::Mono));
    range.format.setForeground(Theme::text);
    return range;
}

} // namespace

KeyNote::KeyNote(QWidget *parent) : QWidget(parent)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setMaximumWidth(scaled(widest));
    setRole(this, QAccessible::StaticText);
}

void KeyNote::setText(const QString &file, const QString &note)
{
    const QString shown = madeVisible(file);
    const QString after = madeVisible(note);
    if (shown == m_file && after == m_note) {
        return;
    }
    m_file = shown;
    m_note = after;
    setAccessibleName(m_file + m_note);
    updateGeometry();
    update();
}

QSize KeyNote::sizeHint() const
{
    return {scaled(widest), heightForWidth(scaled(widest))};
}

QSize KeyNote::minimumSizeHint() const
{
    return {leastWidth, lineHeight(Type::Mono)};
}

int KeyNote::heightForWidth(int width) const
{
    QTextLayout layout;
    return lay(layout, shownFile(width), width);
}

QString KeyNote::shownFile(int width) const
{
    return QFontMetrics(quillfen::font(Type::Mono)).elidedText(m_file, Qt::ElideMiddle, 2 * width - width / 4);
}

int KeyNote::lay(QTextLayout &layout, const QString &file, int width) const
{
    QTextOption option(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignAbsolute);
    option.setTextDirection(m_note.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setText(file + m_note);
    layout.setFont(quillfen::font(Type::Caption));
    layout.setFormats({fixedWidth(file.size())});
    layout.setTextOption(option);
    const int step = lineHeight(Type::Mono);
    int height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(1, width));
        // The two faces differ in height: the lines stand evenly all the same.
        line.setPosition(QPointF(0, height + (step - line.height()) / 2.0));
        height += step;
    }
    layout.endLayout();
    return height;
}

void KeyNote::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QTextLayout layout;
    lay(layout, shownFile(width()), width());
    painter.setPen(Theme::text);
    layout.draw(&painter, QPointF());
}

bool KeyNote::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && shownFile(width()) != m_file) {
        showPlainToolTip(static_cast<QHelpEvent *>(event)->globalPos(), m_file + m_note, this);
        return true;
    }
    return QWidget::event(event);
}

} // namespace quillfen
