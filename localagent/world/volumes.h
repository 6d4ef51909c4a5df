// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

struct NewVolume {
    std::string name;
    std::int64_t size = 0;
    std::string share;
    bool customerKey = false;
};

/// What the plan has left to allocate; never below zero.
[[nodiscard]] std::int64_t freeBytes(const World &world);

/// Throws a Refusal unless `name` is a good name that no volume has yet.
void requireFreeName(const World &world, std::string_view name);
/// Throws a Refusal unless the plan has `size` bytes left.
void requireCapacity(const World &world, std::int64_t size);

/// Adds a volume to the world as it stands, with the next free id when it has none. The rules were asked before.
Volume &addVolume(World &world, Volume volume);

/// Creates a volume. It has no appliance yet.
Volume &createVolume(World &world, const NewVolume &wanted);

/// Resizes: a mounted volume leaves its folder, and comes back to it when its appliance is done.
void resizeVolume(World &world, VolumeId id, std::int64_t size, const Done &done);

/// Deletes: unmounts, lets the last writes reach the vault, then removes the appliance and the volume. The user's key
/// file stays.
void removeVolume(World &world, VolumeId id, const Done &done);

} // namespace quillfen::localagent
