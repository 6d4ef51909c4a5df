// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

// The copies and media orders that operators pack and ship.

[[nodiscard]] json::object orderRecords(const World &world);
/// Marks a packed medium as sent. Refuses downloads, and orders that are not ready.
void shipOrder(World &world, std::int64_t id, const std::string &carrier, const std::string &tracking);
void deleteOrder(World &world, std::int64_t id);

} // namespace quillfen::localagent
