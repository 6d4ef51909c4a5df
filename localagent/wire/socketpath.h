// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace quillfen::localagent {

/// Where the agent listens when nobody says otherwise: QUILL_AGENT_SOCKET, else below XDG_RUNTIME_DIR, else below the
/// temporary folder with the user's number in it. The client looks in the same places in the same order.
[[nodiscard]] std::string defaultSocketPath();

} // namespace quillfen::localagent
