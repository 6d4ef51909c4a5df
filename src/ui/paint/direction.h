// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRectF>
#include <QString>

class QPainter;
class QWidget;

namespace quillfen {

/// The direction in which what the painter paints on is read: its widget's, or the program's for a picture.
[[nodiscard]] Qt::LayoutDirection directionOf(const QPainter &painter);

/// A part of a widget that is laid out from left to right, where it stands in a widget that is read from right to left.
[[nodiscard]] QRectF mirrored(const QWidget &widget, const QRectF &part);

/// Draws one line of text in the painter's font and colour. `alignment` is meant for reading from left to right and
/// turns with the widget; the text itself runs as its own letters do, so that a sentence or a path in Latin letters
/// keeps its full stop at its end in every layout. `flags` are further ones of `Qt::TextFlag`.
void drawLine(QPainter &painter, const QRectF &rect, Qt::Alignment alignment, const QString &text, int flags = 0);

/// The same at a place of its own: `at` is the left end of the baseline.
void drawLine(QPainter &painter, const QPointF &at, const QString &text);

} // namespace quillfen
