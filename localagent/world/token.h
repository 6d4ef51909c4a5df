// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/clock.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillfen::localagent {

/// What a program signs in with instead of a person. The secret itself is told once and kept nowhere.
struct Token {
    std::string id;
    std::string label; ///< "desktop:<computer>" and "cli:<computer>" are the ones that signing in makes
    Time created = {};
    std::optional<Time> expires; ///< nothing: never
};

/// The account's tokens, oldest first.
struct Tokens {
    std::vector<Token> list;
    std::int64_t lastId = 500;
};

} // namespace quillfen::localagent
