// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/fields.h"
#include "localagent/world/world.h"

namespace quillfen::localagent {

/// Adds as many volumes as "volumes" says, with names, sizes and states of every kind, "mounted" of them mounted. The
/// same seed makes the same volumes.
void generateVolumes(World &world, const Fields &fields);

} // namespace quillfen::localagent
