// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

// Every token of the service.

[[nodiscard]] json::object serviceTokenRecords(const World &world);
/// Ends a token, which stays listed as revoked. Refuses one that has ended.
void revokeServiceToken(World &world, std::int64_t id);
/// Removes the revoked ones for good, and returns how many there were.
[[nodiscard]] std::int64_t pruneServiceTokens(World &world);

} // namespace quillfen::localagent
