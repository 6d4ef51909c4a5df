// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPoint>
#include <QRect>
#include <QRegion>
#include <Qt>

namespace quillfen {

/// How deep the border is that resizes the window, and how far its corners reach along the edges.
inline constexpr int resizeDepth = 6;
inline constexpr int resizeCorner = 16;

/// How high the strip at the top is by which the window is moved.
inline constexpr int dragHeight = 36;

/// The edges that a press at `point` of a window of `size` takes hold of; none inside the border.
[[nodiscard]] Qt::Edges edgesAt(const QPoint &point, const QSize &size);

/// The border of a window of `size`, the places where `edgesAt` finds something.
[[nodiscard]] QRegion resizeBorder(const QSize &size);

/// The pointer's shape over `edges`.
[[nodiscard]] Qt::CursorShape resizeCursor(Qt::Edges edges);

/// True where a press and drag moves the window.
[[nodiscard]] bool inDragArea(const QPoint &point, const QSize &size);

/// `start` with `edges` moved by `delta`. An edge stops where the window would become smaller than `smallest`; the
/// opposite one stays where it is.
[[nodiscard]] QRect resized(const QRect &start, Qt::Edges edges, const QPoint &delta, const QSize &smallest);

} // namespace quillfen
