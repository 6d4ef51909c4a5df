// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

#include <string>
#include <string_view>

namespace quillfen::localagent {

/// Throws a Refusal unless a hub may be called so: letters, digits and hyphens, and no other hub's name.
void requireHubName(const World &world, std::string_view name);
/// Throws a Refusal unless it is an address with a port that no other hub has, and something answers there. Nothing
/// ever answers under the top-level domain "invalid".
void requireHubAddress(const World &world, std::string_view address);
/// The host key of the machine at an address: always the same one.
[[nodiscard]] std::string hostKeyOf(std::string_view address);

} // namespace quillfen::localagent
