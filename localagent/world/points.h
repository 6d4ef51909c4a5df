// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

/// The restore points of a volume, oldest first, close together in the last hours and far apart long ago.
[[nodiscard]] const std::vector<Time> &restorePoints(World &world, Volume &volume);

/// The answer about them, in the form that the world is set to.
[[nodiscard]] json::object pointsRecord(World &world, Volume &volume);

} // namespace quillfen::localagent
