// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/system/systemmotion.h"

#import <AppKit/AppKit.h>

namespace quillfen {

bool systemReducesMotion()
{
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
}

} // namespace quillfen
