// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPoint>

class QWidget;

namespace quillfen {

/// Moves `window` with the pointer, which was pressed at `start` of the screen, until the button is released. The
/// window system does it where it can, which keeps snapping and the edges of the screen working; where nobody manages
/// windows the window follows the pointer by itself.
void beginMove(QWidget &window, const QPoint &start);

/// The same for resizing at `edges`.
void beginResize(QWidget &window, Qt::Edges edges, const QPoint &start);

} // namespace quillfen
