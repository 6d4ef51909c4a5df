// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/restorepointslist.h"

#include "boards/timetravel/restorepointrow.h"

#include <algorithm>
#include <limits>

namespace quillfen {

namespace {

constexpr int pointHeight = 40;
constexpr int mostRows = 7;

/// How far the scroll bar ends before the list does, whose last row lies between the round corners of the card.
constexpr int barInset = 6;

QWidget *barEnd()
{
    auto *const end = new QWidget;
    end->setFixedHeight(barInset);
    return end;
}

} // namespace

RestorePointsList::RestorePointsList(QWidget *parent) : LongList(*this, pointHeight, tr("Restore points"), parent)
{
    setOneTabStop();
    setFollowsEnd();
    for (const Qt::Alignment end : {Qt::AlignTop, Qt::AlignBottom}) {
        addScrollBarWidget(barEnd(), end);
    }
}

void RestorePointsList::setPoints(const RestorePoints &points)
{
    if (m_points.isSameAs(points)) {
        return;
    }
    m_points = points;
    updateGeometry();
    refresh();
}

QSize RestorePointsList::sizeHint() const
{
    return {400, std::min(fullHeight(), heightOf(mostRows))};
}

QSize RestorePointsList::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

int RestorePointsList::rowCount() const
{
    return static_cast<int>(std::min<std::size_t>(m_points.size(), std::numeric_limits<int>::max()));
}

QString RestorePointsList::rowKey(int row) const
{
    return m_points.timestamp(static_cast<std::size_t>(row));
}

int RestorePointsList::findRow(const QString &key, int) const
{
    return static_cast<int>(std::min<std::size_t>(m_points.placeOf(key), std::numeric_limits<int>::max()));
}

QWidget *RestorePointsList::makeRow()
{
    auto *const row = new RestorePointRow;
    connect(row, &RestorePointRow::opened, this, [this, row] { Q_EMIT openRequested(row->timestamp()); });
    return row;
}

void RestorePointsList::fillRow(QWidget *widget, int row)
{
    auto *const shown = static_cast<RestorePointRow *>(widget);
    const auto place = static_cast<std::size_t>(row);
    shown->setPoint(place, m_points.timestamp(place), m_points.label(place));
    shown->setBesideScrollBar(rowCount() > mostRows);
}

} // namespace quillfen
