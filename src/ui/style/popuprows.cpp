// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/style/popuprows.h"

#include "ui/paint/direction.h"
#include "ui/paint/icons.h"
#include "ui/paint/paint.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace quillfen {
namespace {

/// One row of a menu or of a popup's list: its fill while highlighted and the mark of the current choice.
void paintRowGround(QPainter &painter, const QRect &rect, Qt::LayoutDirection direction, bool highlighted, bool current)
{
    if (highlighted) {
        paintSurface(painter, rect.adjusted(4, 0, -4, 0), 6, Theme::panel);
    }
    if (current) {
        const QRect mark(rect.left() + 6, rect.center().y() - 7, 3, 16);
        paintSurface(painter, QStyle::visualRect(direction, rect, mark), 1.5, Theme::accent);
    }
}

} // namespace

void paintMenuItem(QPainter &painter, const QStyleOptionMenuItem &item)
{
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        paintHairline(painter, QRectF(item.rect.left() + 8, item.rect.center().y(), item.rect.width() - 16, 1),
                      Theme::line);
        return;
    }
    const bool enabled = item.state.testFlag(QStyle::State_Enabled);
    paintRowGround(painter, item.rect, item.direction, enabled && item.state.testFlag(QStyle::State_Selected),
                   item.checked);
    const QRect area = item.rect.adjusted(popupRowPadding, 0, -popupRowPadding, 0);
    const QString label = item.text.section(u'\t', 0, 0);
    const QString keys = item.text.section(u'\t', 1);
    painter.setFont(font(Type::Body));
    painter.setPen(enabled ? Theme::heading : Theme::muted);
    drawLine(painter, area, Qt::AlignLeft | Qt::AlignVCenter, label, Qt::TextHideMnemonic);
    painter.setPen(enabled ? Theme::text : Theme::muted);
    drawLine(painter, area, Qt::AlignRight | Qt::AlignVCenter, keys);
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu) {
        const QRect chevron(item.rect.right() - 24, item.rect.center().y() - 7, 16, 16);
        paintIcon(painter, Icon::ChevronRight, QStyle::visualRect(item.direction, item.rect, chevron), Theme::text);
    }
}

void paintPopupItem(QPainter &painter, const QStyleOptionViewItem &item, bool current)
{
    const bool highlighted = item.state & (QStyle::State_Selected | QStyle::State_MouseOver);
    // The list stands 4 within its frame, so that it leaves the frame's round corners alone.
    const QRect row = item.rect.adjusted(-4, 0, 4, 0);
    paintRowGround(painter, row, item.direction, highlighted, current);
    const QRect area = row.adjusted(popupRowPadding, 0, -popupRowPadding, 0);
    painter.setFont(font(current ? Type::BodyMedium : Type::Body));
    painter.setPen(item.state.testFlag(QStyle::State_Enabled) ? Theme::heading : Theme::muted);
    drawLine(painter, area, Qt::AlignLeft | Qt::AlignVCenter,
             painter.fontMetrics().elidedText(item.text, Qt::ElideRight, area.width()));
}

} // namespace quillfen
