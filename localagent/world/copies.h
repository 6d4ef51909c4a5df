// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

/// Makes a copy that is ready and fully copied a volume of its own. It keeps the key of the volume it was made from.
/// Throws a Refusal when there is no such copy, when it is not ready, or when name or plan stand against it.
Volume &promoteCopy(World &world, std::int64_t id, const std::string &name);

/// Deletes a copy. Throws a Refusal when there is none.
void discardCopy(World &world, std::int64_t id);

} // namespace quillfen::localagent
