// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPalette>

namespace quillfen {

/// The palette of the house in the roles of Qt, for the widgets that Qt paints itself.
[[nodiscard]] QPalette housePalette();

} // namespace quillfen
