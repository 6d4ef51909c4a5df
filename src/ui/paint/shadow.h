// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMargins>
#include <QRectF>

class QPainter;

namespace quillfen {

/// A soft shadow in `Theme::dBg`, `offset` below its box.
struct Shadow {
    int offset;
    int blur;
    float strength;

    /// The room that the shadow takes around its box.
    [[nodiscard]] QMargins margins() const;
};

inline constexpr Shadow sheetShadow{12, 32, 0.28F}; ///< below sheets, dialogs and the menu-bar panel
inline constexpr Shadow popupShadow{6, 18, 0.25F};  ///< below toasts, popups and tooltips

/// Paints the shadow of a box with rounded corners; the box itself comes over it.
void paintShadow(QPainter &painter, const QRectF &box, qreal radius, const Shadow &shadow);

} // namespace quillfen
