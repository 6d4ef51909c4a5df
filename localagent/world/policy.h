// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

#include <array>
#include <string>
#include <string_view>

namespace quillfen::localagent {

/// Six numbers, as `Volume::policy` has them.
using Policy = std::array<std::int64_t, 6>;

/// "720,24,7,4,6,1"
[[nodiscard]] std::string policyText(const Policy &policy);

/// Reads such a text, spaces around the numbers allowed. Throws a Refusal that names the number that will not do.
[[nodiscard]] Policy policyFrom(std::string_view text);

/// Has the volume's history kept like this from now on. What the policy before has let go does not come back.
void setPolicy(World &world, VolumeId id, const Policy &policy);

} // namespace quillfen::localagent
