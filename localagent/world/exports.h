// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/fields.h"
#include "localagent/world/world.h"

#include <string>
#include <vector>

namespace quillfen::localagent {

struct ExportOrder {
    std::string delivery; ///< "link" or "media"; the rest is for media
    std::string medium;
    std::string region;
    std::string address;
};

/// The latest copy of a volume as clients read it: {"state", "delivery", "medium", "region", "link", "expires_at",
/// "error", "retrieval_note", "key_note", "tracking"}, those that say something. Null when there never was one.
[[nodiscard]] json::value exportRecord(World &world, VolumeId id);

/// What a copy of the volume costs: {"options": […], "retrieval": {"total", "free_bytes"}}.
[[nodiscard]] json::object mediaRecord(World &world, VolumeId id, const std::string &region);

/// Has a copy packed, which takes its time. It replaces the volume's last one. Throws a Refusal.
void orderExport(World &world, VolumeId id, const ExportOrder &order);

/// Takes the latest copy away, its link included; one that is being packed is packed no further. Throws a Refusal when
/// there is none.
void removeExport(World &world, VolumeId id);

/// The copies that a world begins with.
void loadExports(World &world, const std::vector<Fields> &exports);

} // namespace quillfen::localagent
