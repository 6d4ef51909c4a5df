// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/oneprocess.h"

namespace quillfen::platform {

// Launch Services starts a bundle once and hands links and reopening to the process that runs.
std::unique_ptr<Door> makeDoor()
{
    return nullptr;
}

} // namespace quillfen::platform
