// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/panel/menubarrows.h"

#include <QIcon>

namespace quillfen {

/// The status icon, in one colour that the desktop may replace by its own: the plain drawing while everything is
/// uploaded, with a dot while something is under way, crossed out while the engine does not run.
[[nodiscard]] QIcon statusIcon(Overall overall);

} // namespace quillfen
