// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/activation.h"

#include <QWidget>

namespace quillfen::platform {

void bringForward(QWidget &window, const Wish &)
{
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace quillfen::platform
