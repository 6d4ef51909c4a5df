// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/published.h"

#include <QString>

namespace quillfen {

/// Whether the controls of windows stand at the left, as some desktops have it. One for the program; the windows and
/// what has to make room for their controls observe it.
[[nodiscard]] Published<bool> &controlsAtLeft();

/// Reads a desktop's own words, "close,minimize:maximize": what stands before the colon is at the left. Without a
/// button that closes, it is the right.
[[nodiscard]] bool closesAtLeft(const QString &buttonLayout);

} // namespace quillfen
