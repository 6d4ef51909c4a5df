// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainview/sidebarentry.h"

#include "ui/accessible.h"
#include "ui/paint/direction.h"
#include "ui/style/hoverfade.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QPainter>

namespace quillfen {

namespace {

constexpr int entryHeight = 36;
constexpr int radius = 6;
constexpr int iconLeft = 14;
constexpr int pictureSize = 18;
constexpr int textLeft = iconLeft + pictureSize + 10;
constexpr int textRight = 10;
constexpr QRectF mark{4, 0, 3, 16};

} // namespace

SidebarEntry::SidebarEntry(Section section, QWidget *parent)
    : QAbstractButton(parent), m_section(section), m_title(displayTitle(section)), m_hover(new HoverFade(this))
{
    setCheckable(true);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setProperty("focusRadius", radius);
    setAccessible(this, QAccessible::PageTab, m_title);
}

QSize SidebarEntry::sizeHint() const
{
    // The selected one has the wider letters; none of them may grow by being chosen.
    const int text = QFontMetrics(quillfen::font(Type::Section)).horizontalAdvance(m_title);
    return {textLeft + text + textRight, scaled(entryHeight)};
}

void SidebarEntry::paintEvent(QPaintEvent *)
{
    const bool selected = isChecked();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(selected ? Theme::dPanel : Theme::faded(Theme::dPanel2, static_cast<float>(m_hover->share())));
    painter.drawRoundedRect(rect(), radius, radius);

    const qreal middle = height() / 2.0;
    if (selected) {
        painter.setBrush(Theme::accent);
        painter.drawRoundedRect(mirrored(*this, mark.translated(0, middle - mark.height() / 2)), 1.5, 1.5);
    }
    const QRectF picture(iconLeft, middle - pictureSize / 2.0, pictureSize, pictureSize);
    paintIcon(painter, sectionIcon(m_section), mirrored(*this, picture), selected ? Theme::accent : Theme::dText);

    const QFont &face = quillfen::font(selected ? Type::Section : Type::SectionRegular);
    const QRect room = rect().adjusted(textLeft, 0, -textRight, 0);
    const QString line = QFontMetrics(face).elidedText(m_title, Qt::ElideRight, room.width());
    setToolTip(line == m_title ? QString() : m_title);
    painter.setFont(face);
    painter.setPen(selected ? Theme::dBright : Theme::dText);
    drawLine(painter, mirrored(*this, room), Qt::AlignLeft | Qt::AlignVCenter, line);
}

} // namespace quillfen
