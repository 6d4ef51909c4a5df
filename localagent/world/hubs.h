// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

// The hubs of the service. One of them serves; the others follow it, each some seconds behind, and catch up. A
// promotion goes through "checking", "catching up" (until the lag is below five seconds) and "switching"; after it the
// hub that served before hands over until it is demoted.

[[nodiscard]] json::object hubRecords(const World &world);
[[nodiscard]] json::object hubRecord(const World &world, const Hub &hub);
[[nodiscard]] json::object replicationRecord(const World &world);
[[nodiscard]] json::object promotionRecord(const World &world);

/// The hub with this id; throws a Refusal of kind Missing.
[[nodiscard]] Hub &hubOf(World &world, std::int64_t id);
/// How far a hub is behind now, in seconds.
[[nodiscard]] double lagOf(const World &world, const Hub &hub);

/// Starts a promotion that goes on by itself. Refuses a hub that serves or is not built, and a second promotion.
void promote(World &world, std::int64_t id);
/// Takes up a promotion that is waiting for the lag, as a world file has it.
void resumePromotion(World &world, std::int64_t id);
/// Throws unless the hub may be demoted: another one serves by now.
void requireDemotable(World &world, std::int64_t id);
void demote(World &world, std::int64_t id);
/// Throws unless the hub may go: it does not serve, and what it holds may be given up.
void beginRetiring(World &world, std::int64_t id, bool force);
void retire(World &world, std::int64_t id);

/// Looks at a machine: its host key and what it is made of. Refuses names that are taken and addresses that are none.
[[nodiscard]] json::object preflight(const World &world, const std::string &name, const std::string &address);
/// Registers the machine that a preflight has seen, and returns its id.
[[nodiscard]] std::int64_t addHub(World &world, const std::string &name, const std::string &address,
                                  const std::string &fingerprint);
/// Has a registered machine built; it becomes a replica by itself.
void build(World &world, std::int64_t id);

} // namespace quillfen::localagent
