// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace quillfen::localagent {

/// Throws a Refusal that says what is wrong with `name` as the name of a volume. A volume's name is also the name of
/// its folder and of its key file, so it must be harmless as both, on every system that mounts it.
void checkVolumeName(std::string_view name);
/// The same for the name of something else that may become a folder: "Give the view a name."
void checkFolderName(std::string_view name, std::string_view what);

/// Whether two names would be the same folder on a file system that does not tell "a" from "A".
[[nodiscard]] bool sameFolder(std::string_view left, std::string_view right);

} // namespace quillfen::localagent
