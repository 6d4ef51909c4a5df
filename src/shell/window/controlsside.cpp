// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/controlsside.h"

#include <QStringList>

namespace quillfen {

Published<bool> &controlsAtLeft()
{
    static Published<bool> atLeft{false};
    return atLeft;
}

bool closesAtLeft(const QString &buttonLayout)
{
    return buttonLayout.section(u':', 0, 0).split(u',').contains(QLatin1StringView("close"));
}

} // namespace quillfen
