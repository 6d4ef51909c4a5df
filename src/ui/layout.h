// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMargins>

#include <initializer_list>
#include <variant>

class QLayout;
class QWidget;
class QBoxLayout;

namespace quillfen {

/// Takes the room that is left, in proportion to `factor`.
struct Stretch {
    int factor = 1;
};

/// A fixed gap in pixels, besides the layout's own spacing.
struct Space {
    int pixels;
};

/// A widget that may grow with `factor`, or stays where it is along the other axis.
struct Item {
    QWidget *widget;
    int factor = 0;
    Qt::Alignment alignment = {};
};

using LayoutItem = std::variant<QWidget *, QLayout *, Stretch, Space, Item>;

/// Arranges items side by side or below one another: `setLayout(column({row({a, Stretch{}, b}), table, card}));`
/// Read from right to left, both turn round, their margins included.
[[nodiscard]] QBoxLayout *row(std::initializer_list<LayoutItem> items, int spacing = 8, QMargins margins = {});
[[nodiscard]] QBoxLayout *column(std::initializer_list<LayoutItem> items, int spacing = 0, QMargins margins = {});

} // namespace quillfen
