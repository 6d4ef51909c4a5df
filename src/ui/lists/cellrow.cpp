// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/cellrow.h"

#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/text/label.h"

#include <QStyle>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int buttonGap = 8;

QRect placeOf(const QWidget *cell, const QRect &room)
{
    const QSize wish = cell->sizeHint();
    const bool isText = cell->sizePolicy().horizontalPolicy() != QSizePolicy::Maximum;
    const int width = isText ? room.width() : std::min(wish.width(), room.width());
    const int height = std::min(wish.height(), room.height());
    return {room.left(), room.top() + (room.height() - height) / 2, width, height};
}

} // namespace

CellRow::CellRow(std::shared_ptr<const std::vector<Column>> columns, QWidget *parent)
    : QWidget(parent), m_columns(std::move(columns))
{
    setRole(this, QAccessible::ListItem);
    setProperty("focusRadius", 5);
}

void CellRow::addCell(QWidget *cell)
{
    cell->setParent(this);
    m_cells.push_back(cell);
}

void CellRow::addButton(Button *button)
{
    button->setParent(this);
    m_buttons.push_back(button);
}

void CellRow::setButtonVisible(Button *button, bool visible)
{
    // A window that is in the background keeps in mind which widget it gives the keyboard to when it comes back.
    if (!visible && window()->focusWidget() == button) {
        setFocus(Qt::OtherFocusReason);
    }
    button->setVisible(visible);
}

void CellRow::setRowName(const QString &name, const QString &columns)
{
    const QString visible = madeVisible(name);
    setAccessibleName(visible);
    setAccessibleDescription(madeVisible(columns));
    for (Button *const button : m_buttons) {
        button->setAccessibleName(QStringLiteral("%1, %2").arg(button->text(), visible));
    }
}

void CellRow::arrange()
{
    const QRect inner = rect().adjusted(cellRowMargin, 0, -cellRowMargin, 0);
    const std::vector<QRect> rects = rooms(inner);
    const auto put = [this](QWidget *cell, const QRect &place) {
        cell->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    };
    for (std::size_t at = 0; at < m_cells.size() && at < rects.size(); ++at) {
        put(m_cells[at], placeOf(m_cells[at], rects[at]));
    }
    int right = inner.right() + 1;
    for (auto last = m_buttons.rbegin(); last != m_buttons.rend(); ++last) {
        Button *const button = *last;
        if (button->isHidden()) {
            continue;
        }
        const QSize size = button->sizeHint();
        put(button, QRect(right - size.width(), (height() - size.height()) / 2, size.width(), size.height()));
        right -= size.width() + buttonGap;
    }
}

std::vector<QRect> CellRow::rooms(const QRect &inner) const
{
    return cellRects(*m_columns, inner);
}

/// A row that has the keyboard itself stands in no order that Tab knows: its place is before its buttons.
bool CellRow::focusNextPrevChild(bool next)
{
    const auto isStop = [](const QWidget *widget) {
        return (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisible() && widget->isEnabled();
    };
    const auto first = std::ranges::find_if(m_buttons, isStop);
    if (!hasFocus() || first == m_buttons.end()) {
        return QWidget::focusNextPrevChild(next);
    }
    QWidget *to = *first;
    while (!next) {
        to = to->previousInFocusChain();
        next = to == *first || (isStop(to) && !isAncestorOf(to) && to->window() == window());
    }
    to->setFocus(to == *first ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void CellRow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

} // namespace quillfen
