// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/system/compositing.h"

namespace quillfen {

bool isComposited()
{
    return true;
}

} // namespace quillfen
