// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

/// Begins a copy of a past second. It fills up with time and is ready then. Throws a Refusal when the moment is not in
/// the volume's history or the name stands against it.
void startCopy(World &world, VolumeId id, const std::string &timestamp, const std::string &name, const Done &done);

/// Lets a copy that is not whole yet fill up from now on.
void hydrate(World &world, const Copy &copy);

/// How much of a copy is there, in percent; nothing once it is whole.
[[nodiscard]] std::optional<std::int64_t> hydrationOf(const World &world, const Copy &copy);

/// Makes a copy that is ready and fully copied a volume of its own. It keeps the key of the volume it was made from.
/// Throws a Refusal when there is no such copy, when it is not ready, or when name or plan stand against it.
Volume &promoteCopy(World &world, std::int64_t id, const std::string &name);

/// Deletes a copy. Throws a Refusal when there is none.
void discardCopy(World &world, std::int64_t id);

} // namespace quillfen::localagent
