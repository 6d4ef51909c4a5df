// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QPainter;
class QStyleOptionMenuItem;
class QStyleOptionViewItem;

namespace quillfen {

inline constexpr int popupRowHeight = 28;
inline constexpr int popupRowPadding = 16;

/// A row of a menu: its label, keys and arrow, a fill while highlighted, a mark while checked.
void paintMenuItem(QPainter &painter, const QStyleOptionMenuItem &item);

/// A row of the list that drops down from a picker, marked when it is the `current` choice.
void paintPopupItem(QPainter &painter, const QStyleOptionViewItem &item, bool current);

} // namespace quillfen
