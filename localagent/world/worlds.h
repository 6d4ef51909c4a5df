// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

namespace quillfen::localagent {

struct BuiltInWorld {
    std::string_view name;
    std::string_view text;
};

/// The files of localagent/worlds, put into the program by the build; by name.
[[nodiscard]] const std::vector<BuiltInWorld> &builtInWorlds();

} // namespace quillfen::localagent
