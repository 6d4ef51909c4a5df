// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <boost/json.hpp>

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <variant>

namespace quillfen::localagent {

namespace json = boost::json;

/// A rule of the world says no. The text is shown to the user as it stands, so it names the reason and, where there is
/// one, the way out.
class Refusal final : public std::runtime_error {
public:
    /// Kinds of refusal, numbered like the answers of a web service, as the "status" of the error tells them.
    enum class Kind : std::int64_t {
        Bad = 400,
        SignedOut = 401,
        Forbidden = 403,
        Missing = 404,
        Conflict = 409,
        Full = 507
    };

    Refusal(Kind refusalKind, const std::string &message) : std::runtime_error(message), kind(refusalKind) {}

    Kind kind;
};

/// How work ends.
using Result = std::variant<json::value, Refusal>;

/// Called once when work that takes its time has ended. Whoever asked may be gone by then.
using Done = std::function<void(Result)>;

} // namespace quillfen::localagent
