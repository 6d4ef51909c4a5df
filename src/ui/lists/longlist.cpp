// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/longlist.h"

#include "ui/accessible.h"
#include "ui/paint/paint.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QApplication>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <limits>

namespace quillfen {

namespace {

/// What a widget can be high at most; beyond it the last rows could not be scrolled to.
constexpr int mostPixels = std::numeric_limits<int>::max() / 2;

} // namespace

int RowSource::findRow(const QString &key, int near) const
{
    const int count = rowCount();
    for (int away = 0; away < std::max(count, near + 1); ++away) {
        if (near - away >= 0 && near - away < count && rowKey(near - away) == key) {
            return near - away;
        }
        if (near + away < count && rowKey(near + away) == key) {
            return near + away;
        }
    }
    return near;
}

LongList::LongList(RowSource &source, int rowHeight, const QString &accessibleName, QWidget *parent)
    : QAbstractScrollArea(parent), m_source(source), m_rowHeight(scaled(rowHeight))
{
    setAccessible(this, QAccessible::List, accessibleName);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);
    verticalScrollBar()->setProperty("overlay", true); // see HouseStyle
    verticalScrollBar()->setSingleStep(m_rowHeight);
}

// The rows go before their list does: what they tell it while they go would come too late.
LongList::~LongList()
{
    for (const auto &[row, shown] : m_shown) {
        shown.widget->removeEventFilter(this);
    }
}

int LongList::heightOf(int count) const
{
    return static_cast<int>(std::min<std::int64_t>(std::int64_t{m_rowHeight} * count, mostPixels));
}

int LongList::fullHeight() const
{
    return heightOf(m_source.rowCount());
}

int LongList::rowsInView() const
{
    return std::max(1, viewport()->height() / m_rowHeight);
}

int LongList::topRow() const
{
    return verticalScrollBar()->value() / m_rowHeight;
}

QWidget *LongList::widgetOf(int row) const
{
    const auto found = m_shown.find(row);
    return found == m_shown.end() ? nullptr : found->second.widget;
}

int LongList::rowOf(const QWidget *inside) const
{
    for (const auto &[row, shown] : m_shown) {
        if (shown.widget == inside || shown.widget->isAncestorOf(inside)) {
            return row;
        }
    }
    return -1;
}

std::optional<LongList::Spot> LongList::focusSpot() const
{
    const QWidget *const focus = QApplication::focusWidget();
    const int row = focus == nullptr ? -1 : rowOf(focus);
    if (row < 0) {
        return std::nullopt;
    }
    return Spot{row, m_shown.at(row).key};
}

bool LongList::has(const Spot &spot, int row) const
{
    return row < m_source.rowCount() && m_source.rowKey(row) == spot.key;
}

bool LongList::isAtEnd() const
{
    return m_followsEnd && verticalScrollBar()->value() == verticalScrollBar()->maximum();
}

void LongList::refresh(Place where)
{
    const std::optional<Spot> focus = focusSpot();
    const int row = topRow();
    const int cut = verticalScrollBar()->value() - row * m_rowHeight;
    const bool end = isAtEnd();
    const auto shown = m_shown.find(row);
    std::optional<Spot> top;
    if (where == Place::Keep && shown != m_shown.end()) {
        top = Spot{row, shown->second.key};
    }

    const QScopedValueRollback refilling(m_refilling, true);
    fitBar();
    if (where == Place::Top) {
        verticalScrollBar()->setValue(0);
    } else {
        scrollTo(end, top, cut);
    }
    adoptRows(focus);
    const int count = m_source.rowCount();
    m_tabStop = m_followsEnd ? std::max(0, count - 1) : m_tabStop;
    const QPointer<QWidget> like = focus ? QApplication::focusWidget() : nullptr;
    place();
    viewport()->update();
    // The row with the keyboard is gone: the keyboard goes to what stands in its place.
    const int heir = focus ? m_source.findRow(focus->key, focus->row) : 0;
    if (focus && count > 0 && !has(*focus, heir)) {
        focusRow(std::min(heir, count - 1), like);
    }
    if (moveTabStop()) {
        orderTabs();
    }
    tidySpares();
}

void LongList::scrollTo(bool end, const std::optional<Spot> &top, int cut)
{
    QScrollBar *const bar = verticalScrollBar();
    if (end) {
        bar->setValue(bar->maximum());
    } else if (top) {
        bar->setValue(heightOf(m_source.findRow(top->key, top->row)) + cut);
    }
}

/// Each row keeps its widget as long as it is in view, and with it hover, focus and a pressed button.
void LongList::adoptRows(const std::optional<Spot> &focus)
{
    std::multimap<QString, QWidget *> known;
    for (const auto &[row, shown] : std::exchange(m_shown, {})) {
        known.emplace(shown.key, shown.widget);
    }
    const auto adopt = [&](int row) {
        const auto found = known.find(m_source.rowKey(row));
        if (found != known.end()) {
            m_shown[row] = {found->second, found->first};
            known.erase(found);
        }
    };
    const int count = m_source.rowCount();
    const int from = std::min(topRow(), std::max(0, count - 1));
    const int until = std::min(count, from + rowsInView() + 2);
    for (int row = from; row < until; ++row) {
        adopt(row);
    }
    const int focused = focus ? m_source.findRow(focus->key, focus->row) : count;
    if (focused < count && !m_shown.contains(focused)) {
        adopt(focused);
    }
    for (const auto &[key, widget] : known) {
        m_spare.push_back(widget);
    }
    for (const auto &[row, shown] : m_shown) {
        m_source.fillRow(shown.widget, row);
    }
}

void LongList::fitBar()
{
    QScrollBar *const bar = verticalScrollBar();
    bar->setPageStep(viewport()->height());
    bar->setRange(0, std::max(0, fullHeight() - viewport()->height()));
}

void LongList::showRow(int row)
{
    QScrollBar *const bar = verticalScrollBar();
    const int top = row * m_rowHeight;
    if (top < bar->value()) {
        bar->setValue(top);
    } else if (top + m_rowHeight > bar->value() + viewport()->height()) {
        bar->setValue(top + m_rowHeight - viewport()->height());
    }
}

QWidget *LongList::takeSpare()
{
    if (m_spare.empty()) {
        QWidget *const row = m_source.makeRow();
        row->setParent(viewport());
        watch(row);
        return row;
    }
    QWidget *const row = m_spare.back();
    m_spare.pop_back();
    return row;
}

void LongList::put(int row, QWidget *widget)
{
    const int y = row * m_rowHeight - verticalScrollBar()->value();
    // What has the keyboard out of sight is just out of sight: coordinates have their limits.
    const int top = std::clamp(y, -m_rowHeight, std::max(-m_rowHeight, viewport()->height()));
    widget->setGeometry(0, top, viewport()->width(), m_rowHeight);
    widget->show();
}

/// Gives every row in view a widget and every widget its place.
void LongList::place()
{
    const int count = m_source.rowCount();
    const int first = topRow();
    const int last =
        std::min(count - 1, (verticalScrollBar()->value() + std::max(0, viewport()->height() - 1)) / m_rowHeight);
    const std::optional<Spot> spot = focusSpot();
    bool changed = false;
    for (auto at = m_shown.begin(); at != m_shown.end();) {
        const bool inView = at->first >= first && at->first <= last;
        const bool held = spot && at->first == spot->row && at->first < count;
        if (inView || held) {
            ++at;
            continue;
        }
        m_spare.push_back(at->second.widget);
        at = m_shown.erase(at);
        changed = true;
    }
    for (int row = first; row <= last; ++row) {
        if (!m_shown.contains(row)) {
            QWidget *const widget = takeSpare();
            m_source.fillRow(widget, row);
            m_shown[row] = {widget, m_source.rowKey(row)};
            changed = true;
        }
    }
    for (const auto &[row, shown] : m_shown) {
        put(row, shown.widget);
    }
    if (!m_refilling) {
        tidySpares();
    }
    if (moveTabStop() || changed || m_refilling) {
        orderTabs();
    }
}

void LongList::tidySpares()
{
    for (QWidget *const spare : m_spare) {
        spare->hide();
    }
}

void LongList::scrollContentsBy(int, int)
{
    if (!m_refilling) {
        place();
        viewport()->update();
    }
}

void LongList::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    const bool end = isAtEnd();
    fitBar();
    scrollTo(end, std::nullopt, 0);
    place();
}

bool LongList::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        QPainter painter(viewport());
        const int first = topRow();
        const int last = std::min(m_source.rowCount() - 1, first + rowsInView() + 1);
        for (int row = std::max(1, first); row <= last; ++row) {
            const int y = row * m_rowHeight - verticalScrollBar()->value();
            if (y <= 0) {
                continue; // on top of the list lies the line of what is above it
            }
            paintHairline(painter, QRectF(0, y, viewport()->width(), 1), m_line);
        }
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

} // namespace quillfen
