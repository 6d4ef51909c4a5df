// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/generator.h"

#include "localagent/world/mounts.h"
#include "localagent/world/volumes.h"

#include <algorithm>
#include <array>

namespace quillfen::localagent {

namespace {

constexpr std::array<std::string_view, 24> subjects = {
    "atlas",     "Archive",   "budget",   "camera",      "Client Work", "contracts", "drafts", "Fotos",
    "Häuser",    "invoices",  "journal",  "Kundendaten", "lab",         "mail",      "Music",  "Notes",
    "paintings", "Películas", "research", "scans",       "studio",      "Übungen",   "写真",   "архив",
};
constexpr std::array<std::string_view, 12> qualities = {
    "", "-2019", "-2023", " (old)", "-raw", "-final", " copy", "_backup", "-eu", "-north", " & more", "-x",
};
constexpr std::array<std::int64_t, 8> sizes = {1, 5, 20, 64, 100, 256, 512, 2048};

// std::uniform_int_distribution answers differently from library to library; a world must not.
std::size_t pick(World &world, std::size_t count)
{
    return static_cast<std::size_t>(world.random() % count);
}

void giveAppliance(World &world, Volume &volume)
{
    static constexpr std::array states = {Appliance::Online,    Appliance::Online,  Appliance::Online,
                                          Appliance::Online,    Appliance::Stopped, Appliance::None,
                                          Appliance::Elsewhere, Appliance::Online};
    volume.appliance = states[pick(world, states.size())];
    volume.startedOnce = volume.appliance != Appliance::None;
    volume.resumes = volume.appliance == Appliance::Online;
    volume.applianceSince = world.clock.now() - std::chrono::hours(1 + pick(world, 400));
    // One in ten uploads for longer than anybody watches.
    if (volume.appliance == Appliance::Online && pick(world, 10) == 0) {
        volume.pending = volume.used * static_cast<std::int64_t>(1 + pick(world, 90)) / 100;
    }
}

Volume generated(World &world, std::size_t number)
{
    static constexpr std::array<std::string_view, 4> shares = {"smb", "smb", "nfs", "iscsi"};
    const Time now = world.clock.now();
    Volume volume;
    volume.name = std::string(subjects[pick(world, subjects.size())]) +
                  std::string(qualities[pick(world, qualities.size())]) + "-" + std::to_string(number);
    volume.size = sizes[pick(world, sizes.size())] * gigabyte;
    volume.share = shares[pick(world, shares.size())];
    volume.customerKey = pick(world, 4) == 0;
    volume.created = now - std::chrono::hours(1000 + pick(world, 8000));
    volume.used = volume.size / 1000 * static_cast<std::int64_t>(10 + pick(world, 900));
    volume.cache = volume.used / 4;
    volume.pendingAt = now;
    volume.target.secret = "secret-" + std::to_string(number);
    volume.history.planned = static_cast<std::int64_t>(50 + pick(world, 2000));
    volume.history.oldest = volume.created;
    giveAppliance(world, volume);
    return volume;
}

} // namespace

void generateVolumes(World &world, const Fields &fields)
{
    const std::int64_t count = fields.whole("volumes");
    std::int64_t toMount = fields.whole("mounted");
    for (std::int64_t number = 1; number <= count; ++number) {
        const Volume &volume = addVolume(world, generated(world, static_cast<std::size_t>(number)));
        if (toMount > 0 && volume.appliance == Appliance::Online && volume.share != "iscsi") {
            attach(world, volume.id);
            --toMount;
        }
    }
}

} // namespace quillfen::localagent
