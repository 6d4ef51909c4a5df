// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/system/compositing.h"

#include "ui/system/x11selection_linux.h"

namespace quillfen {

bool isComposited()
{
    // A compositor owns the selection of its screen for as long as it works. Screen 0 is the one modern servers have.
    // Wayland always composites; offscreen pictures keep their transparency.
    return selectionHasOwner("_NET_WM_CM_S0").value_or(true);
}

} // namespace quillfen
