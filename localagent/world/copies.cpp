// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/copies.h"

#include "localagent/world/appliances.h"
#include "localagent/world/names.h"
#include "localagent/world/points.h"
#include "localagent/world/signin.h"
#include "localagent/world/volumes.h"

#include <algorithm>

namespace quillfen::localagent {

namespace {

std::vector<Copy>::iterator find(World &world, std::int64_t id)
{
    std::vector<Copy> &copies = world.state.copies;
    const auto found = std::find_if(copies.begin(), copies.end(), [id](const Copy &copy) { return copy.id == id; });
    if (found == copies.end()) {
        throw Refusal(Refusal::Kind::Missing, "There is no copy " + std::to_string(id) + " any more.");
    }
    return found;
}

constexpr Seconds prepareTime{1};

/// How long a whole copy of this volume takes.
Seconds fillTime(const World &world, const Copy &copy)
{
    const auto volume = world.state.volumes.find(copy.volume);
    const std::int64_t used = volume == world.state.volumes.end() ? 0 : volume->second.used;
    return Seconds(1.0 + static_cast<double>(used) / static_cast<double>(world.state.copyRate));
}

void requireFreeCopyName(const World &world, const std::string &name)
{
    checkFolderName(name, "copy");
    for (const Copy &copy : world.state.copies) {
        if (sameFolder(copy.name, name)) {
            throw Refusal(Refusal::Kind::Conflict,
                          "A copy named " + copy.name + " exists already. Choose another name, or discard it first.");
        }
    }
    for (const auto &[id, volume] : world.state.volumes) {
        if (sameFolder(volume.name, name)) {
            throw Refusal(Refusal::Kind::Conflict,
                          "A volume named " + volume.name + " exists already. Choose another name for the copy.");
        }
    }
}

} // namespace

void startCopy(World &world, VolumeId id, const std::string &timestamp, const std::string &name, const Done &done)
{
    Volume &volume = idleVolumeOf(world, id);
    requireEngine(world.state.engine);
    requireFreeCopyName(world, name);
    Copy copy;
    copy.rewindTo = momentInHistory(world, volume, timestamp);
    copy.id = ++world.state.lastId;
    copy.volume = id;
    copy.name = name;
    copy.size = volume.size;
    copy.state = "hydrating";
    copy.hydration = 0;
    copy.since = world.clock.now();
    world.state.copies.push_back(copy);
    hydrate(world, copy);
    world.clock.after(prepareTime, [copy, done] {
        done(json::object{{"recovery_id", copy.id}, {"name", copy.name}, {"state", copy.state}});
    });
}

void hydrate(World &world, const Copy &copy)
{
    const double left = 1.0 - static_cast<double>(copy.hydration.value_or(100)) / 100;
    world.clock.after(fillTime(world, copy) * left, [&world, id = copy.id] {
        for (Copy &each : world.state.copies) {
            if (each.id == id) {
                each.state = "ready";
                each.hydration.reset();
            }
        }
    });
}

std::optional<std::int64_t> hydrationOf(const World &world, const Copy &copy)
{
    if (!copy.hydration || copy.state == "ready") {
        return copy.hydration;
    }
    const double more = Seconds(world.clock.now() - copy.since) / fillTime(world, copy) * 100;
    return std::clamp<std::int64_t>(*copy.hydration + static_cast<std::int64_t>(more), 0, 99);
}

Volume &promoteCopy(World &world, std::int64_t id, const std::string &name)
{
    const Copy copy = *find(world, id);
    requireOpenAccount(world);
    if (copy.state != "ready" || copy.hydration) {
        throw Refusal(Refusal::Kind::Conflict, copy.name + " is not fully copied yet.");
    }
    requireFreeName(world, name);
    requireCapacity(world, copy.size);
    const Volume &source = volumeOf(world, copy.volume);
    Volume volume;
    volume.name = name;
    volume.size = copy.size;
    volume.share = source.share;
    volume.customerKey = source.customerKey;
    volume.keyVolume = source.customerKey ? keyNameOf(source) : std::string();
    volume.startedOnce = true; // its key exists already; a missing one is not made anew
    volume.used = source.used;
    volume.created = volume.pendingAt = volume.applianceSince = world.clock.now();
    volume.history.until = volume.created;
    volume.history.written = true;
    volume.target.secret = randomText(world, 16);
    Volume &added = addVolume(world, std::move(volume));
    discardCopy(world, id);
    announceVolumes(world);
    return added;
}

void discardCopy(World &world, std::int64_t id)
{
    world.state.copies.erase(find(world, id));
}

} // namespace quillfen::localagent
