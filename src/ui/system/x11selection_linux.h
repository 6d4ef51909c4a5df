// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>

namespace quillfen {

/// Whether somebody owns a selection of the X server, by which window managers, compositors and status areas announce
/// themselves (ICCCM, manager selections). None without an X server. Waits for the server's answer.
[[nodiscard]] std::optional<bool> selectionHasOwner(std::string_view selection);

} // namespace quillfen
