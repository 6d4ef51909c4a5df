// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/volumes.h"

#include "localagent/world/appliances.h"
#include "localagent/world/mounts.h"
#include "localagent/world/names.h"
#include "localagent/world/signin.h"
#include "localagent/world/views.h"

#include <algorithm>

namespace quillfen::localagent {

namespace {

constexpr Seconds resizeTime{4};
constexpr Seconds stopTime{2};
// A delete has the whole line to itself; it never makes its user wait longer for the last writes.
constexpr Seconds longestDrain{30};

void requireSize(const Volume &volume, std::int64_t size)
{
    if (size < gigabyte) {
        throw Refusal(Refusal::Kind::Bad, "A volume has at least 1 GB.");
    }
    if (size < volume.used) {
        throw Refusal(Refusal::Kind::Conflict, volume.name + " holds " + sizeText(volume.used) +
                                                   "; it cannot shrink to " + sizeText(size) + ".");
    }
}

void finishResize(World &world, VolumeId id, std::int64_t size, bool wasMounted, const Done &done)
{
    const auto found = world.state.volumes.find(id);
    if (found == world.state.volumes.end()) {
        done(Refusal(Refusal::Kind::Missing, "The volume was deleted while it was being resized."));
        return;
    }
    Volume &volume = found->second;
    volume.busyWith.clear();
    volume.size = size;
    announceVolumes(world);
    bool remounted = false;
    if (wasMounted && volume.appliance == Appliance::Online) {
        attach(world, id);
        remounted = true;
    }
    json::object answer{{"id", id}, {"size_bytes", size}, {"remounted", remounted}};
    done(std::move(answer));
}

void finishRemoval(World &world, VolumeId id, const Done &done)
{
    dropViews(world, id);
    world.state.volumes.erase(id);
    world.state.exports.erase(id);
    std::erase(world.state.order, id);
    std::erase_if(world.state.copies, [id](const Copy &copy) { return copy.volume == id; });
    announceVolumes(world);
    done(json::object{{"id", id}, {"removed", true}});
}

} // namespace

std::int64_t freeBytes(const World &world)
{
    std::int64_t allocated = 0;
    for (const auto &[id, volume] : world.state.volumes) {
        allocated += volume.size;
    }
    return std::max<std::int64_t>(0, world.state.account.capacity - allocated);
}

void requireFreeName(const World &world, std::string_view name)
{
    checkVolumeName(name);
    for (const auto &[id, volume] : world.state.volumes) {
        if (sameFolder(volume.name, name)) {
            throw Refusal(Refusal::Kind::Conflict, "A volume named " + volume.name + " exists already.");
        }
    }
}

void requireCapacity(const World &world, std::int64_t size)
{
    const std::int64_t left = freeBytes(world);
    if (size > left) {
        throw Refusal(Refusal::Kind::Full, "Only " + std::to_string(left / gigabyte) + " GB are left on your plan.");
    }
}

Volume &addVolume(World &world, Volume volume)
{
    State &state = world.state;
    if (volume.id == 0) {
        volume.id = state.lastId + 1;
    }
    state.lastId = std::max(state.lastId, volume.id);
    state.order.push_back(volume.id);
    return state.volumes.insert_or_assign(volume.id, std::move(volume)).first->second;
}

Volume &createVolume(World &world, const NewVolume &wanted)
{
    requireOpenAccount(world);
    requireFreeName(world, wanted.name);
    if (wanted.size < gigabyte) {
        throw Refusal(Refusal::Kind::Bad, "A volume has at least 1 GB.");
    }
    requireCapacity(world, wanted.size);
    Volume volume;
    volume.name = wanted.name;
    volume.size = wanted.size;
    volume.share = wanted.share;
    volume.customerKey = wanted.customerKey;
    volume.created = volume.pendingAt = volume.applianceSince = world.clock.now();
    volume.history.until = world.clock.now();
    volume.history.written = true;
    volume.target.secret = randomText(world, 16);
    Volume &added = addVolume(world, std::move(volume));
    announceVolumes(world);
    return added;
}

void resizeVolume(World &world, VolumeId id, std::int64_t size, const Done &done)
{
    Volume &volume = idleVolumeOf(world, id);
    requireSize(volume, size);
    if (size > volume.size) {
        requireCapacity(world, size - volume.size);
    }
    const bool wasMounted = mountOf(world, id) != nullptr;
    if (wasMounted) {
        detach(world, id);
    }
    volume.busyWith = "being resized";
    world.clock.after(resizeTime,
                      [&world, id, size, wasMounted, done] { finishResize(world, id, size, wasMounted, done); });
}

void removeVolume(World &world, VolumeId id, const Done &done)
{
    Volume &volume = idleVolumeOf(world, id);
    volume.busyWith = "being deleted";
    if (mountOf(world, id) != nullptr) {
        detach(world, id);
    }
    detachViews(world, id);
    const bool up = volume.appliance == Appliance::Connecting || volume.appliance == Appliance::Online;
    const Seconds wait = up ? stopTime + std::min(uploadTime(world, volume), longestDrain) : Seconds(1);
    world.clock.after(wait, [&world, id, done] { finishRemoval(world, id, done); });
}

} // namespace quillfen::localagent
