// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/methods/method.h"

#include <vector>

namespace quillfen::localagent {

// The lines of the table that are for operators alone, by subject.

[[nodiscard]] std::vector<Method> hubMethods();
[[nodiscard]] std::vector<Method> userMethods();
[[nodiscard]] std::vector<Method> serviceTokenMethods();
[[nodiscard]] std::vector<Method> orderMethods();

} // namespace quillfen::localagent
