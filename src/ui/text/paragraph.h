// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/text/type.h"

#include <QColor>
#include <QRectF>
#include <QString>

class QPainter;

namespace quillfen {

/// How a text is set: in lines of its role's height, at most `maximumLines` of them, the last one elided.
struct Paragraph {
    QString text;
    Type type = Type::Body;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    Qt::TextElideMode elide = Qt::ElideRight;
    int maximumLines = 1;
};

/// The width of the longest line when nothing wraps; no more than `limit` is measured.
[[nodiscard]] int naturalWidth(const Paragraph &paragraph, int limit);

/// How many lines the paragraph takes in `width` pixels.
[[nodiscard]] int lineCount(const Paragraph &paragraph, int width);

/// Whether something of the text is missing in `width` pixels.
[[nodiscard]] bool isElided(const Paragraph &paragraph, int width);

void paintParagraph(QPainter &painter, const Paragraph &paragraph, const QRectF &rect, const QColor &colour);

} // namespace quillfen
