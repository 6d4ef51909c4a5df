// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/copies.h"

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

} // namespace

Volume &promoteCopy(World &world, std::int64_t id, const std::string &name)
{
    const Copy copy = *find(world, id);
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
