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

} // namespace quillfen::localagent
