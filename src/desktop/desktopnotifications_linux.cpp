// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/busnotifications.h"
#include "desktop/sessionbus.h"

namespace quillfen {

std::unique_ptr<DesktopNotifications> makeDesktopNotifications()
{
    if (!sessionBusExists()) {
        return nullptr;
    }
    return std::make_unique<BusNotifications>(QDBusConnection::sessionBus());
}

} // namespace quillfen
