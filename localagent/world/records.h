// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

// The records that answers and events carry. One function per record, so that an event and the query of the same
// subject can never disagree. Sizes are bytes, times ISO 8601 in UTC.

[[nodiscard]] json::object authRecord(const World &world);
[[nodiscard]] json::object accountRecord(const World &world);
[[nodiscard]] json::object engineRecord(const World &world);
[[nodiscard]] json::array checkRecords(const World &world);

[[nodiscard]] json::object volumeRecord(const World &world, const Volume &volume);
[[nodiscard]] json::array volumeRecords(const World &world);
/// The live side of a volume:
/// {"appliance": {"online", "connected", "pending_bytes"}, "offsite": {"percent"},
///  "sync": {"local": {"FS_USED_BYTES"}, "cache_bytes", "pending_bytes"}, "cache_bytes", "pending_bytes"}.
/// The two sizes stand in "sync" and beside it. FS_USED_BYTES is missing while no appliance can tell it.
[[nodiscard]] json::object statusRecord(const World &world, const Volume &volume);

[[nodiscard]] json::array mountRecords(const World &world);
/// Every appliance on this computer, those without a volume included.
[[nodiscard]] json::array applianceRecords(const World &world);
[[nodiscard]] json::array orphanRecords(const World &world);
[[nodiscard]] json::object copyRecord(const World &world, const Copy &copy);
[[nodiscard]] json::object copyRecords(const World &world, VolumeId volume);

} // namespace quillfen::localagent
