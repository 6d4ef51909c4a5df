// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/clock.h"
#include "localagent/world/home.h"
#include "localagent/world/state.h"

#include <functional>
#include <random>
#include <string>

namespace quillfen::localagent {

/// The state with what its rules need: time, the home folder, chance and a way to tell what has changed. The rules
/// themselves stand beside it, one file per subject (volumes, appliances, mounts, engine, …), as functions on a World.
struct World {
    State state;
    Clock clock;
    Home home;
    std::mt19937_64 random;
    /// Hears of changes: "volumes.changed" and the like, with the records that the queries answer.
    std::function<void(std::string_view event, json::value data)> announce = [](std::string_view, const json::value &) {
    };
};

/// The volume with this id; throws a Refusal of kind Missing.
[[nodiscard]] Volume &volumeOf(World &world, VolumeId id);
/// The same, for a change: throws a Refusal of kind Conflict while another change is under way.
[[nodiscard]] Volume &idleVolumeOf(World &world, VolumeId id);

[[nodiscard]] std::string keyNameOf(const Volume &volume);
/// `length` random letters and digits.
[[nodiscard]] std::string randomText(World &world, std::size_t length);
/// "61.4 GB", "512 GB", "2.0 TB", as the client writes sizes.
[[nodiscard]] std::string sizeText(std::int64_t bytes);

// Each tells of its subject with the very records that the matching query answers.
void announceAuth(World &world);
void announceEngine(World &world);
void announceVolumes(World &world);
void announceMounts(World &world);
/// A line for the user while something long goes on; `event` is "vm.progress" or "appliance.progress".
void announceProgress(World &world, std::string_view event, std::string_view message);

} // namespace quillfen::localagent
