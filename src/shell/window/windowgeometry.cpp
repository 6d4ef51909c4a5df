// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/windowgeometry.h"

#include "ui/parts/scrollarea.h"

#include <algorithm>

namespace quillfen {

namespace {

static_assert(resizeDepth <= windowEdge, "the border lies over the scroll bars at the window's edge");

/// The edge along one axis of length `length`: `low`, `high` or none, within `reach` of either end.
Qt::Edges edgeWithin(int position, int length, int reach, Qt::Edge low, Qt::Edge high)
{
    if (position < reach) {
        return low;
    }
    return position >= length - reach ? Qt::Edges(high) : Qt::Edges();
}

} // namespace

Qt::Edges edgesAt(const QPoint &point, const QSize &size)
{
    if (!QRect(QPoint(), size).contains(point)) {
        return {};
    }
    const auto across = [&](int reach) {
        return edgeWithin(point.x(), size.width(), reach, Qt::LeftEdge, Qt::RightEdge);
    };
    const auto along = [&](int reach) {
        return edgeWithin(point.y(), size.height(), reach, Qt::TopEdge, Qt::BottomEdge);
    };
    if (!across(resizeDepth) && !along(resizeDepth)) {
        return {};
    }
    // On the border the corners reach further than it is deep: six pixels square are hard to hit.
    return across(resizeCorner) | along(resizeCorner);
}

QRegion resizeBorder(const QSize &size)
{
    const QRect whole(QPoint(), size);
    return QRegion(whole) - whole.adjusted(resizeDepth, resizeDepth, -resizeDepth, -resizeDepth);
}

Qt::CursorShape resizeCursor(Qt::Edges edges)
{
    if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge)) {
        return Qt::SizeFDiagCursor;
    }
    if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge)) {
        return Qt::SizeBDiagCursor;
    }
    if (edges & (Qt::LeftEdge | Qt::RightEdge)) {
        return Qt::SizeHorCursor;
    }
    return edges ? Qt::SizeVerCursor : Qt::ArrowCursor;
}

bool inDragArea(const QPoint &point, const QSize &size)
{
    return QRect(0, 0, size.width(), dragHeight).contains(point);
}

QRect resized(const QRect &start, Qt::Edges edges, const QPoint &delta, const QSize &smallest)
{
    QRect result = start;
    if (edges & Qt::LeftEdge) {
        result.setLeft(std::min(start.left() + delta.x(), start.right() + 1 - smallest.width()));
    }
    if (edges & Qt::RightEdge) {
        result.setRight(std::max(start.right() + delta.x(), start.left() - 1 + smallest.width()));
    }
    if (edges & Qt::TopEdge) {
        result.setTop(std::min(start.top() + delta.y(), start.bottom() + 1 - smallest.height()));
    }
    if (edges & Qt::BottomEdge) {
        result.setBottom(std::max(start.bottom() + delta.y(), start.top() - 1 + smallest.height()));
    }
    return result;
}

} // namespace quillfen
