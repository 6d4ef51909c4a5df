// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

#include <optional>
#include <string>

namespace quillfen::localagent {

/// Mounts the volume in its folder under ~/Quillfen, where it is then a real folder. A volume that is mounted already
/// stays as it is. Throws a Refusal that says what has to happen first.
const Mount &attach(World &world, VolumeId id);

/// Takes the mount away. Throws a Refusal when there is none.
void detach(World &world, VolumeId id);
/// The same for the mount with this name, the volume's own or one of its views'.
void detach(World &world, VolumeId id, std::string_view name);

/// The volume's own mount, not those of its views.
[[nodiscard]] const Mount *mountOf(const World &world, VolumeId id);

/// Takes every mount away and closes every view, as at the end of engine or agent or at signing out.
void detachAll(World &world);

} // namespace quillfen::localagent
