// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/methods/faults.h"

#include <boost/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace quillfen::localagent {

/// Error codes of JSON-RPC 2.0, and our one for "a rule says no" (its "status" tells which kind of no).
namespace code {
inline constexpr std::int64_t parseError = -32700;
inline constexpr std::int64_t invalidRequest = -32600;
inline constexpr std::int64_t unknownMethod = -32601;
inline constexpr std::int64_t badParams = -32602;
inline constexpr std::int64_t internal = -32603;
inline constexpr std::int64_t refused = -32001;
} // namespace code

struct Request {
    json::value id; ///< as it came: an integer, a text or null
    bool wantsAnswer = true;
    std::string method;
    json::object params;
};

/// What is wrong with a line, and the id under which to say so.
struct BadRequest {
    json::value id;
    Error error;
};

/// Reads one line. Whatever the line holds, this ends in one of the two.
[[nodiscard]] std::variant<Request, BadRequest> parseRequest(std::string_view line);

[[nodiscard]] std::string answerLine(const json::value &id, json::value result);
/// The same for a result that is JSON text already.
[[nodiscard]] std::string answerLineOfText(const json::value &id, std::string_view result);
[[nodiscard]] std::string errorLine(const json::value &id, const Error &error);
[[nodiscard]] std::string eventLine(std::string_view name, json::value data);

} // namespace quillfen::localagent
