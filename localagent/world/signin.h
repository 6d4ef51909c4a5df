// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

/// Signs this computer in with an enrolment code, or with a quillfen: link that holds one. A code works once. `api` is
/// the control plane of a self-hosted manager, empty for the product's own. Throws a Refusal with the reason.
void enroll(World &world, const std::string &codeOrLink, const std::string &api);

/// Signs this computer out; its mounts go. Throws a Refusal when nobody is signed in.
void signOut(World &world);

/// The code in a text that is either the code itself or a link like "quillfen://enroll?code=quill-…".
[[nodiscard]] std::string enrolmentCode(std::string_view codeOrLink);

} // namespace quillfen::localagent
