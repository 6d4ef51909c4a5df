// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/mounts.h"

#include "localagent/world/points.h"
#include "localagent/world/views.h"

#include <algorithm>

namespace quillfen::localagent {

namespace {

void requireMountable(const Volume &volume)
{
    if (volume.share == "iscsi") {
        throw Refusal(Refusal::Kind::Conflict, volume.name +
                                                   " is an iSCSI volume: other machines log in to it, it is " +
                                                   "not mounted on this computer.");
    }
    switch (volume.appliance) {
    case Appliance::Online:
        return;
    case Appliance::Starting:
    case Appliance::Connecting:
        throw Refusal(Refusal::Kind::Conflict,
                      "The appliance of " + volume.name + " is still coming up; try again in a few seconds.");
    case Appliance::Elsewhere:
        throw Refusal(Refusal::Kind::Conflict, volume.name + " is running on another computer. Stop it there first.");
    case Appliance::None:
    case Appliance::Stopped:
        throw Refusal(Refusal::Kind::Conflict, "The appliance of " + volume.name + " is not running. Start it first.");
    }
}

} // namespace

const Mount &attach(World &world, VolumeId id)
{
    Volume &volume = idleVolumeOf(world, id);
    if (const Mount *mount = mountOf(world, id)) {
        return *mount;
    }
    requireMountable(volume);
    settleHistory(world, volume);
    const std::string folder = world.home.makeMountFolder(volume.name);
    world.state.mounts.push_back({volume.name, folder, id, volume.share, {}});
    announceMounts(world);
    return world.state.mounts.back();
}

void detach(World &world, VolumeId id)
{
    detach(world, id, volumeOf(world, id).name);
}

void detach(World &world, VolumeId id, std::string_view name)
{
    Volume &volume = volumeOf(world, id);
    const auto isMeant = [&](const Mount &mount) { return mount.volume == id && mount.name == name; };
    if (std::ranges::none_of(world.state.mounts, isMeant)) {
        throw Refusal(Refusal::Kind::Missing, std::string(name) + " is not mounted.");
    }
    settleHistory(world, volume);
    std::erase_if(world.state.mounts, isMeant);
    world.home.removeMountFolder(name);
    announceMounts(world);
}

const Mount *mountOf(const World &world, VolumeId id)
{
    const auto &mounts = world.state.mounts;
    const auto found = std::find_if(mounts.begin(), mounts.end(),
                                    [id](const Mount &mount) { return mount.volume == id && mount.view.empty(); });
    return found == mounts.end() ? nullptr : &*found;
}

void detachAll(World &world)
{
    closeViews(world);
    if (world.state.mounts.empty()) {
        return;
    }
    for (const Mount &mount : world.state.mounts) {
        settleHistory(world, volumeOf(world, mount.volume));
    }
    for (const Mount &mount : world.state.mounts) {
        world.home.removeMountFolder(mount.name);
    }
    world.state.mounts.clear();
    announceMounts(world);
}

} // namespace quillfen::localagent
