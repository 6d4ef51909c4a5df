// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/world.h"

namespace quillfen::localagent {

// The container that serves a volume. It comes up in two steps: first the container runs ("connecting"), a few seconds
// later it has found its vault ("online"), and only then can the volume be mounted. While online it uploads.

/// A name as the engine and iSCSI take it: lower-case letters, digits and hyphens; "volume" when nothing is left of it.
[[nodiscard]] std::string slugOf(std::string_view name);
[[nodiscard]] std::string containerOf(const Volume &volume);
[[nodiscard]] std::string portsOf(const Volume &volume);
/// What the engine says of a container: "Up 6 days", "Exited (0) 3 days ago", "Created".
[[nodiscard]] std::string containerStatus(Appliance appliance, Seconds age);

/// What is still to be uploaded now.
[[nodiscard]] std::int64_t pendingBytes(const World &world, const Volume &volume);
/// How much of what the volume holds is in the vault; 100 only when nothing is pending.
[[nodiscard]] std::int64_t offsitePercent(const World &world, const Volume &volume);
/// How long the upload of the pending bytes takes from now on.
[[nodiscard]] Seconds uploadTime(const World &world, const Volume &volume);

/// Throws a Refusal unless there is an engine that runs.
void requireEngine(const Engine &engine);

/// Starts the volume's appliance on this computer, with "appliance.progress" on the way, and makes its key when it is
/// the first start. Ends when the container runs; at once when it does already. Throws a Refusal when it cannot start.
void deploy(World &world, VolumeId id, const Done &done);

/// The container runs; it is online after `delay`, counted from now.
void connectAppliance(World &world, Volume &volume, Seconds delay);
void connectAppliance(World &world, Volume &volume);
/// The container has stopped.
void stopAppliance(World &world, Volume &volume);

/// Removes an appliance that has no volume in the account.
void removeOrphan(World &world, const std::string &container, const Done &done);

} // namespace quillfen::localagent
