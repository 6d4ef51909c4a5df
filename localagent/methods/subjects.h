// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/methods/method.h"

#include <vector>

namespace quillfen::localagent {

// The lines of the table, by subject; each stands with its handlers in a file of its own.

[[nodiscard]] std::vector<Method> serviceMethods(); ///< the agent itself: version, list, events, faults
[[nodiscard]] std::vector<Method> accountMethods(); ///< signing in and out, the plan
[[nodiscard]] std::vector<Method> engineMethods();  ///< the engine, its checks and its appliances
[[nodiscard]] std::vector<Method> volumeMethods();
[[nodiscard]] std::vector<Method> mountMethods();
[[nodiscard]] std::vector<Method> historyMethods(); ///< restore points and copies
[[nodiscard]] std::vector<Method> iscsiMethods();
[[nodiscard]] std::vector<Method> operatorMethods(); ///< running the service
[[nodiscard]] std::vector<Method> tokenMethods();    ///< the account's tokens
[[nodiscard]] std::vector<Method> exportMethods();   ///< copies that leave the vault
[[nodiscard]] std::vector<Method> policyMethods();   ///< how long each second is kept
[[nodiscard]] std::vector<Method> viewMethods();     ///< open seconds of the past

/// The parameter that most methods begin with.
[[nodiscard]] inline Parameter volumeId()
{
    return {.name = "volume_id", .type = Type::Whole, .summary = "the volume's id, as volumes.list tells it"};
}

} // namespace quillfen::localagent
