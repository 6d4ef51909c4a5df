// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "rpc/json.h"

#include <string>

namespace quillfen {

/// `value` in UTF-8, one element or member a line, without the spaces that would indent the lines: at a depth of a
/// thousand they would be far more than the text. Characters that would not be seen, or would change how others are
/// seen, come as \u escapes, so that what is shown is what is there and still the same JSON. Any depth; any thread.
[[nodiscard]] std::string prettyLines(const json::value &value);

} // namespace quillfen
