// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/sessionbus.h"

#include <QFileInfo>
#include <QString>

using namespace Qt::StringLiterals;

namespace quillfen {

bool sessionBusExists()
{
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
        return true;
    }
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo::exists(runtime + "/bus"_L1);
}

} // namespace quillfen
