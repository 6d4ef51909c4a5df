// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

#include <string>
#include <string_view>

namespace quillfen::localagent {

// A volume that is in use changes, and each change leaves a restore point. The volume's policy thins them with age: of
// each second, minute, hour, day, week and month the first point stays for as long as the policy says.

/// The restore points of a volume as of now, oldest first.
[[nodiscard]] const std::vector<Time> &restorePoints(World &world, Volume &volume);

/// Puts in what has changed until now. To be called before a volume begins or ends to be in use, and before its policy
/// changes.
void settleHistory(World &world, Volume &volume);

/// A restore point of this moment that stays whatever the policy says.
void pinPoint(World &world, Volume &volume, const std::string &label);

/// Puts a point in, unless its second has one.
void addPoint(World &world, Volume &volume);

/// The moment that `timestamp` names, when it lies in the volume's history. Throws a Refusal.
[[nodiscard]] Time momentInHistory(World &world, Volume &volume, std::string_view timestamp);

/// The answer about the restore points as JSON text, in the form that the world is set to. Text and no value: there may
/// be a million of them.
[[nodiscard]] std::string pointsText(World &world, Volume &volume);

} // namespace quillfen::localagent
