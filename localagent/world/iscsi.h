// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

#include <optional>
#include <string>

namespace quillfen::localagent {

/// How other machines reach an iSCSI volume: target, portal, login and ready-made commands for Linux and Windows, in
/// which "<CHAP secret>" stands where the secret belongs. Throws a Refusal for any other volume.
[[nodiscard]] json::object iscsiRecord(const World &world, const Volume &volume);

/// The secret as the appliance on this computer has it; empty when no appliance is here.
[[nodiscard]] std::string localSecret(const Volume &volume);

/// Changes portal and login; what is not given stays. An empty portal leaves the target to this computer alone.
void changeTarget(World &world, VolumeId id, const std::optional<std::string> &portal, std::optional<bool> chap);

} // namespace quillfen::localagent
