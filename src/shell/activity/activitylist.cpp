// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/activity/activitylist.h"

#include "shell/activity/activitydelegate.h"
#include "ui/controls/spinner.h"
#include "ui/lists/rowsview.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace quillfen {

ActivityList::ActivityList(const Activity &activity, QWidget *parent)
    : QListView(parent), m_rows(new ActivityModel(activity, this))
{
    setModel(m_rows);
    setItemDelegate(new ActivityDelegate(this));
    dressRowsView(this, tr("Activity"));
    connect(&m_turn, &QTimer::timeout, this, &ActivityList::turnSpinners);
}

QSize ActivityList::minimumSizeHint() const
{
    return {0, ActivityDelegate::rowHeight()};
}

int ActivityList::ringedRow() const
{
    return hasFocus() && m_rows->rowCount() > 0 ? std::max(currentIndex().row(), 0) : -1;
}

void ActivityList::sync()
{
    changeRows([this] { m_rows->sync(); });
}

void ActivityList::setFilter(const QString &search, bool problemsOnly)
{
    changeRows([&] { m_rows->setFilter(search, problemsOnly); });
}

/// Whatever stands at the upper edge stays there; at the very top the newest is seen to come.
void ActivityList::changeRows(const std::function<void()> &change)
{
    const QScopedValueRollback changing(m_changing, true);
    const int height = ActivityDelegate::rowHeight();
    const int value = verticalScrollBar()->value();
    const int topRow = value / height;
    const bool holds = value > 0 && topRow < m_rows->rowCount();
    const std::optional<ActivityModel::Key> top = holds ? std::optional(m_rows->key(topRow)) : std::nullopt;
    change();
    // Laid out at once: left to the first paint, the rows would jump.
    executeDelayedItemsLayout();
    if (const int row = top ? m_rows->rowOf(*top) : -1; row >= 0) {
        verticalScrollBar()->setValue(row * height + value % height);
    }
    mark(m_marked);
    if (isVisible()) {
        m_rows->runningCount() > 0 ? m_turn.start(spinnerInterval()) : m_turn.stop();
    }
}

void ActivityList::mark(const std::optional<ActivityModel::Key> &key)
{
    const QScopedValueRollback changing(m_changing, true);
    m_marked = key;
    const QModelIndex index = m_rows->index(key ? m_rows->rowOf(*key) : -1);
    if (!index.isValid()) {
        selectionModel()->clear();
    } else if (currentIndex() != index || !selectionModel()->isSelected(index)) {
        const bool follow = hasAutoScroll();
        setAutoScroll(false);
        setCurrentIndex(index);
        setAutoScroll(follow);
    }
}

void ActivityList::updateRunning()
{
    const int height = ActivityDelegate::rowHeight();
    viewport()->update(0, -verticalScrollBar()->value(), viewport()->width(), m_rows->runningCount() * height);
}

void ActivityList::turnSpinners()
{
    for (int row = 0; row < m_rows->runningCount(); ++row) {
        const QRect place = visualRect(m_rows->index(row));
        if (place.top() > viewport()->height()) {
            return;
        }
        viewport()->update(ActivityDelegate::markRect(place, layoutDirection()));
    }
}

void ActivityList::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QListView::currentChanged(current, previous);
    if (!m_changing && current.isValid()) {
        m_marked = m_rows->key(current.row());
        Q_EMIT chosen(*m_marked);
    }
}

// Letters search nothing here: there is a field for that.
void ActivityList::keyboardSearch(const QString &) {}

// Qt makes the first row the current one by itself; nobody has chosen it.
void ActivityList::focusInEvent(QFocusEvent *event)
{
    const QScopedValueRollback changing(m_changing, true);
    QListView::focusInEvent(event);
    if (!selectionModel()->hasSelection()) {
        selectionModel()->clearCurrentIndex();
    }
}

void ActivityList::showEvent(QShowEvent *event)
{
    QListView::showEvent(event);
    if (m_rows->runningCount() > 0) {
        m_turn.start(spinnerInterval());
    }
}

void ActivityList::hideEvent(QHideEvent *event)
{
    m_turn.stop();
    QListView::hideEvent(event);
}

} // namespace quillfen
