// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

/// Sets the engine up, with "vm.progress" on the way; ends with a running engine. An engine that exists already ends it
/// at once. Throws a Refusal while another set-up is under way.
void prepareEngine(World &world, const Done &done);

/// Starts the engine and with it the appliances that ran before. Throws a Refusal when there is no engine to start.
void startEngine(World &world, const Done &done);

/// Unmounts each volume once its last change has reached the vault, with "vm.progress" on the way, then stops the
/// engine. Throws a Refusal when the engine does not run, is stopping, or a volume is being changed.
void stopEngineSafely(World &world, const Done &done);

} // namespace quillfen::localagent
