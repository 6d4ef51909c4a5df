// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "outputrows.h"

#include <QPointF>
#include <QString>

class QPainter;

namespace quillfen {

/// How wide a column of fixed-width text is, in pixels.
[[nodiscard]] qreal columnWidth();

/// Where the characters of one row stand, in pixels from the left edge of the text. Plain rows are told by counting;
/// only others are measured, since what a font lacks comes from another whose characters are wider.
class RowLayout final {
public:
    RowLayout(const OutputRows &rows, const OutputRows::Row &row);

    /// The place in the buffer must be within the row.
    [[nodiscard]] qreal xOf(std::size_t offset) const;
    [[nodiscard]] std::size_t offsetAt(qreal x) const;
    void paint(QPainter &painter, const QPointF &topLeft, int height) const;

private:
    [[nodiscard]] bool isPlain() const noexcept;

    std::string_view m_bytes;
    std::size_t m_begin;
    qreal m_indent;
    QString m_text;
};

} // namespace quillfen
