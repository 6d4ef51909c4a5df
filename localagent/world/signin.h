// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

/// Signs this computer in with an enrolment code, or with a quillfen: link that holds one. A code works once. `api` is
/// the control plane of a self-hosted manager, empty for the product's own. Throws a Refusal with the reason.
void enroll(World &world, const std::string &codeOrLink, const std::string &api);

/// Signs this computer out; its mounts and tokens go. Throws a Refusal when nobody is signed in.
void signOut(World &world);

/// Schedules the account and its volumes for destruction; `reclaimAccount` undoes it as long as the account is there.
/// Each throws a Refusal when there is nothing to do.
void closeAccount(World &world);
void reclaimAccount(World &world);

/// Throws a Refusal while the account is closing: nothing new begins in it.
void requireOpenAccount(const World &world);

/// The code in a text that is either the code itself or a link like "quillfen://enroll?code=quill-…".
[[nodiscard]] std::string enrolmentCode(std::string_view codeOrLink);

} // namespace quillfen::localagent
