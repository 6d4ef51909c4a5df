// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/world.h"

#include "localagent/world/records.h"

#include <array>
#include <cstdio>

namespace quillfen::localagent {

Volume &volumeOf(World &world, VolumeId id)
{
    const auto found = world.state.volumes.find(id);
    if (found == world.state.volumes.end()) {
        throw Refusal(Refusal::Kind::Missing, "There is no volume " + std::to_string(id) + " in this account.");
    }
    return found->second;
}

Volume &idleVolumeOf(World &world, VolumeId id)
{
    Volume &volume = volumeOf(world, id);
    if (!volume.busyWith.empty()) {
        throw Refusal(Refusal::Kind::Conflict, volume.name + " is " + volume.busyWith + "; wait until that is done.");
    }
    return volume;
}

std::string keyNameOf(const Volume &volume)
{
    return volume.keyVolume.empty() ? volume.name : volume.keyVolume;
}

std::string randomText(World &world, std::size_t length)
{
    static constexpr std::string_view letters = "ABCDEFGHJKLMNPQRSTUVWXYZabcdefghijkmnopqrstuvwxyz23456789";
    std::uniform_int_distribution<std::size_t> pick(0, letters.size() - 1);
    std::string text(length, ' ');
    for (char &letter : text) {
        letter = letters[pick(world.random)];
    }
    return text;
}

std::string sizeText(std::int64_t bytes)
{
    if (bytes % gigabyte == 0 && bytes < 1024 * gigabyte) {
        return std::to_string(bytes / gigabyte) + " GB";
    }
    const double amount = static_cast<double>(bytes) / static_cast<double>(gigabyte);
    std::array<char, 64> text = {};
    if (amount >= 1024) {
        std::snprintf(text.data(), text.size(), "%.1f TB", amount / 1024);
    } else {
        std::snprintf(text.data(), text.size(), "%.1f GB", amount);
    }
    return text.data();
}

void announceAuth(World &world)
{
    world.announce("auth.changed", authRecord(world));
}

void announceEngine(World &world)
{
    world.announce("vm.changed", engineRecord(world));
}

void announceVolumes(World &world)
{
    world.announce("volumes.changed", volumeRecords(world));
}

void announceMounts(World &world)
{
    world.announce("mount.changed", mountRecords(world));
}

void announceProgress(World &world, std::string_view event, std::string_view message)
{
    world.announce(event, json::object{{"message", message}});
}

} // namespace quillfen::localagent
