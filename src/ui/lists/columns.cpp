// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/lists/columns.h"

#include "ui/text/type.h"

#include <algorithm>

namespace quillfen {

namespace {

template <typename Part>
int sum(const std::vector<Column> &columns, Part part)
{
    int total = 0;
    for (const Column &column : columns) {
        total += part(column);
    }
    return total;
}

int wanted(const Column &column)
{
    return scaled(column.width);
}

int least(const Column &column)
{
    return std::min(scaled(column.least), wanted(column));
}

int share(const Column &column)
{
    return column.share;
}

std::vector<int> widthsIn(const std::vector<Column> &columns, int room)
{
    const int all = sum(columns, wanted);
    const int smallest = sum(columns, least);
    const int shares = std::max(1, sum(columns, share));
    // Texts can be cut off and tell so; the buttons of the last column cannot.
    const int buttons = columns.empty() ? 0 : std::min(least(columns.back()), room);
    const int texts = smallest - (columns.empty() ? 0 : least(columns.back()));
    std::vector<int> widths;
    widths.reserve(columns.size());
    for (const Column &column : columns) {
        if (room >= all) {
            widths.push_back(wanted(column) + (room - all) * column.share / shares);
        } else if (room >= smallest) {
            widths.push_back(least(column) + (wanted(column) - least(column)) * (room - smallest) / (all - smallest));
        } else if (&column == &columns.back()) {
            widths.push_back(buttons);
        } else {
            widths.push_back(least(column) * (room - buttons) / std::max(1, texts));
        }
    }
    return widths;
}

} // namespace

std::vector<QRect> cellRects(const std::vector<Column> &columns, const QRect &row, int gap)
{
    const int gaps = gap * std::max(0, static_cast<int>(columns.size()) - 1);
    std::vector<QRect> rects;
    int left = row.left();
    for (const int width : widthsIn(columns, std::max(0, row.width() - gaps))) {
        rects.emplace_back(left, row.top(), width, row.height());
        left += width + gap;
    }
    // What rounding leaves goes to the last, whose buttons stand at the right edge.
    if (!rects.empty() && rects.back().right() < row.right()) {
        rects.back().setRight(row.right());
    }
    return rects;
}

} // namespace quillfen
