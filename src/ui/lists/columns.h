// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRect>

#include <vector>

namespace quillfen {

/// A column of a list of rows. Widths are pixels at scale 1 and grow with the system's text.
struct Column {
    int width = 0; ///< in a window of the usual size
    int least = 0; ///< what it gives way to in a narrow one
    int share = 0; ///< of what a wider window has to give
};

/// Where the cells of a row stand, left to right with `gap` between them. In a row too narrow for their least widths
/// the columns become narrower still, in proportion: nothing scrolls sideways.
[[nodiscard]] std::vector<QRect> cellRects(const std::vector<Column> &columns, const QRect &row, int gap = 8);

} // namespace quillfen
