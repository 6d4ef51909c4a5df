// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/fields.h"
#include "localagent/world/world.h"

#include <optional>
#include <string>
#include <vector>

namespace quillfen::localagent {

/// The tokens of a world file. "{computer}" in a label is the name of this computer.
void loadTokens(World &world, const std::vector<Fields> &tokens);

/// How this computer calls itself in the labels of its tokens.
[[nodiscard]] std::string computerName();

/// {"tokens": [{"token_id", "label", "created_at", "expires_at"}]} of those that have not expired; "expires_at" is
/// missing where a token never does.
[[nodiscard]] json::object tokenRecords(const World &world);

/// Makes a token that ends after so many days (nothing: never) and answers it with its secret, which nobody is told
/// again. Throws a Refusal with what is wrong with label or days, or while the account is closing.
json::object createToken(World &world, const std::string &label, std::optional<std::int64_t> days);

/// Throws a Refusal when there is no such token, and for the one that the app on this computer uses itself.
void revokeToken(World &world, const std::string &id);

/// A code with which another computer signs in, once and within a day. Throws a Refusal while the account is closing.
std::string createEnrolmentCode(World &world);

/// The two tokens of this computer, the app's and the command's: made at signing in, gone at signing out.
void issueOwnTokens(World &world);
void revokeOwnTokens(World &world);

} // namespace quillfen::localagent
