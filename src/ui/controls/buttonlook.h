// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/controls/buttons.h"

namespace quillfen {

/// What one state of a button looks like; an invalid colour is not painted.
struct ButtonLook {
    QColor fill;
    QColor line;
    QColor label;
    QColor innerLine = {};
};

/// The states of one style.
struct ButtonLooks {
    ButtonLook normal;
    ButtonLook hover;
    ButtonLook pressed;
    ButtonLook disabled;
};

[[nodiscard]] ButtonLooks looksOf(const ButtonStyle &style);

/// `share` of the way from one look to another, for fading.
[[nodiscard]] ButtonLook between(const ButtonLook &from, const ButtonLook &to, qreal share);

/// The height that the style carries, 32 where it carries none.
[[nodiscard]] int heightOf(const ButtonStyle &style);

/// Whether the label is set in semibold: the one button of a screen, or of a dialog, that counts most.
[[nodiscard]] bool isStrong(const ButtonStyle &style);

[[nodiscard]] bool isDark(const ButtonStyle &style);

} // namespace quillfen
