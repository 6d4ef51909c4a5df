// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

// The users of the service and the tenants they belong to.

[[nodiscard]] json::object userRecords(const World &world);
[[nodiscard]] json::object tenantRecords(const World &world);

/// Lets a sign-up in; its tenant begins with nothing bought. Refuses whoever does not wait.
void approveUser(World &world, std::int64_t id);
void rejectUser(World &world, std::int64_t id);
/// Removes a user with all tokens. Refuses the one who asks.
void deleteUser(World &world, std::int64_t id);

} // namespace quillfen::localagent
