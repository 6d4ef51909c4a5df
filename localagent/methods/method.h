// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/methods/params.h"
#include "localagent/wire/clients.h"
#include "localagent/world/world.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillfen::localagent {

class Agent;

/// One call of a method, as its handler sees it. The parameters are checked already.
struct Call {
    World &world;
    Agent &agent;
    ClientId client;
    const Params &params;
};

/// A handler answers at once, with a value or with the JSON text of a long one, or keeps `done` and answers when its
/// work has ended. Each may throw a Refusal before it returns. A handler that answers later copies what it needs of the
/// call.
using Handler =
    std::variant<json::value (*)(const Call &), void (*)(const Call &, const Done &), std::string (*)(const Call &)>;

enum class Access { Anyone, SignedIn, Operator };

/// One line of the table: everything that is known about a method, for the dispatcher as for "methods.list".
struct Method {
    std::string_view name;
    std::string_view http = {}; ///< verb and path of the same operation on the web; empty for what is only local
    std::string_view path = {};
    std::vector<Parameter> parameters = {};
    Access access = Access::SignedIn;
    bool local = false; ///< concerns this computer alone
    std::string_view summary = {};
    Handler handler = static_cast<json::value (*)(const Call &)>(nullptr);
};

} // namespace quillfen::localagent
