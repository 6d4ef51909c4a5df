// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QApplication;

namespace quillfen {

/// Draws the ring around whatever has focus by keyboard, in every window of the program, from now on. A widget tells by
/// dynamic properties how: "focusRadius" (int, 6 without it), "darkSurface" (bool, also of a parent), "ownFocus" (bool:
/// it shows its focus itself, no ring).
void installFocusRing(QApplication &application);

} // namespace quillfen
