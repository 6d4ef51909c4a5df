// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/sessionbus.h"
#include "shell/process/busdoor.h"
#include "shell/process/oneprocess.h"
#include "shell/process/socketdoor.h"

namespace quillfen::platform {

std::unique_ptr<Door> makeDoor()
{
    if (sessionBusExists()) {
        auto door = std::make_unique<BusDoor>();
        if (door->isConnected()) {
            return door;
        }
    }
    return std::make_unique<SocketDoor>(SocketDoor::defaultFolder());
}

} // namespace quillfen::platform
