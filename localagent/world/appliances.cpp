// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/appliances.h"

#include "localagent/world/points.h"

#include <algorithm>

namespace quillfen::localagent {

namespace {

// A user has read that the start was asked for before the first word about its progress comes.
constexpr Seconds orderTime{1};
constexpr Seconds pullTime{1.5};
constexpr Seconds startTime{3};
constexpr Seconds connectTime{4};
constexpr Seconds orphanStopTime{3};

// An empty file system is not free of charge: its tables are the first thing that is uploaded.
std::int64_t emptySize(std::int64_t size)
{
    return (48LL << 20U) + size / 2000;
}

json::value deployed(const World &world, const Volume &volume)
{
    const Seconds age = world.clock.now() - volume.applianceSince;
    return json::object{{"container", containerOf(volume)}, {"status", containerStatus(volume.appliance, age)}};
}

void settle(const World &world, Volume &volume)
{
    volume.pending = pendingBytes(world, volume);
    volume.pendingAt = world.clock.now();
}

void changeAppliance(World &world, Volume &volume, Appliance appliance)
{
    settle(world, volume);
    settleHistory(world, volume);
    volume.appliance = appliance;
    ++volume.applianceLife;
}

// Runs `then` unless the volume or this stretch of its appliance's life is over by that time.
void later(World &world, const Volume &volume, Seconds delay, const std::function<void(Volume &)> &then,
           const Timers::Task &over = {})
{
    world.clock.after(delay, [&world, id = volume.id, life = volume.applianceLife, then, over] {
        const auto found = world.state.volumes.find(id);
        if (found != world.state.volumes.end() && found->second.applianceLife == life) {
            then(found->second);
        } else if (over) {
            over();
        }
    });
}

void finishUpload(World &world, Volume &volume)
{
    volume.pending = 0;
    volume.pendingAt = world.clock.now();
    addPoint(world, volume);
}

void goOnline(World &world, Volume &volume)
{
    changeAppliance(world, volume, Appliance::Online);
    if (volume.used == 0) {
        volume.pending = volume.used = volume.cache = emptySize(volume.size);
    }
    if (volume.pending > 0) {
        later(world, volume, uploadTime(world, volume), [&world](Volume &full) { finishUpload(world, full); });
    }
}

void provideKey(World &world, const Volume &volume)
{
    if (!volume.customerKey || world.home.hasKey(keyNameOf(volume))) {
        return;
    }
    if (volume.startedOnce) {
        throw Refusal(Refusal::Kind::Conflict, "The key of " + volume.name + " is not on this computer. Put it at " +
                                                   world.home.keyFile(keyNameOf(volume)) + " and start again.");
    }
    world.home.makeKey(keyNameOf(volume), randomText(world, 44) + "\n");
}

// Somebody else may wait for the same start; both get their answer when it is done.
void answerWhenUp(World &world, const Volume &volume, const Done &done)
{
    const Seconds left = startTime - Seconds(world.clock.now() - volume.applianceSince);
    later(
        world, volume, left,
        [&world, done](Volume &up) {
            if (up.appliance == Appliance::Starting) {
                connectAppliance(world, up);
            }
            done(deployed(world, up));
        },
        [&world, done, id = volume.id] {
            const auto found = world.state.volumes.find(id);
            if (found != world.state.volumes.end() && found->second.appliance != Appliance::Stopped) {
                done(deployed(world, found->second));
            } else {
                done(Refusal(Refusal::Kind::Conflict, "The appliance was stopped while it was coming up."));
            }
        });
}

} // namespace

std::string slugOf(std::string_view name)
{
    std::string text;
    for (const char letter : name) {
        const bool upper = letter >= 'A' && letter <= 'Z';
        const bool plain = (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9');
        if (upper || plain) {
            text += upper ? static_cast<char>(letter - 'A' + 'a') : letter;
        } else if (!text.empty() && text.back() != '-') {
            text += '-';
        }
    }
    while (text.ends_with('-')) {
        text.pop_back();
    }
    return text.empty() ? "volume" : text;
}

std::string containerOf(const Volume &volume)
{
    return "quill-vol-" + std::to_string(volume.id) + "-" + slugOf(volume.name);
}

std::string portsOf(const Volume &volume)
{
    return std::to_string(4400 + volume.id % 500) + ", " + std::to_string(32000 + volume.id % 700);
}

std::string containerStatus(Appliance appliance, Seconds age)
{
    switch (appliance) {
    case Appliance::Connecting:
    case Appliance::Online:
        return "Up " + spanText(age);
    case Appliance::Starting:
        return "Created";
    default:
        return "Exited (0) " + spanText(age) + " ago";
    }
}

std::int64_t pendingBytes(const World &world, const Volume &volume)
{
    if (volume.appliance != Appliance::Online || volume.pending == 0) {
        return volume.pending;
    }
    const Seconds elapsed = world.clock.now() - volume.pendingAt;
    const double left =
        static_cast<double>(volume.pending) - elapsed.count() * static_cast<double>(world.state.uploadRate);
    return left < 1 ? 0 : static_cast<std::int64_t>(left);
}

std::int64_t offsitePercent(const World &world, const Volume &volume)
{
    const std::int64_t pending = pendingBytes(world, volume);
    if (pending == 0) {
        return 100;
    }
    const double done = volume.used > 0 ? 1.0 - static_cast<double>(pending) / static_cast<double>(volume.used) : 0.0;
    return std::clamp(static_cast<std::int64_t>(done * 100), std::int64_t{0}, std::int64_t{99});
}

Seconds uploadTime(const World &world, const Volume &volume)
{
    return Seconds(static_cast<double>(pendingBytes(world, volume)) / static_cast<double>(world.state.uploadRate));
}

void requireEngine(const Engine &engine)
{
    if (!engine.exists) {
        throw Refusal(Refusal::Kind::Conflict, "The engine is not set up yet. Set it up under Account & engine.");
    }
    if (!engine.running()) {
        throw Refusal(Refusal::Kind::Conflict, "The engine is not running. Start it under Account & engine.");
    }
    if (engine.stopping) {
        throw Refusal(Refusal::Kind::Conflict, "The engine is being stopped. Start it again when that is done.");
    }
}

void deploy(World &world, VolumeId id, const Done &done)
{
    Volume &volume = idleVolumeOf(world, id);
    requireEngine(world.state.engine);
    switch (volume.appliance) {
    case Appliance::Elsewhere:
        throw Refusal(Refusal::Kind::Conflict, volume.name + " is running on another computer. Stop it there first.");
    case Appliance::Connecting:
    case Appliance::Online:
        done(deployed(world, volume));
        return;
    case Appliance::Starting:
        answerWhenUp(world, volume, done);
        return;
    case Appliance::None:
    case Appliance::Stopped:
        break;
    }
    provideKey(world, volume);
    changeAppliance(world, volume, Appliance::Starting);
    volume.applianceSince = world.clock.now();
    later(world, volume, orderTime, [&world](Volume &ordered) {
        announceProgress(world, "appliance.progress", "Getting the appliance for " + ordered.name + "…");
    });
    later(world, volume, pullTime, [&world](Volume &pulled) {
        announceProgress(world, "appliance.progress", "Starting the container of " + pulled.name + "…");
    });
    answerWhenUp(world, volume, done);
}

void connectAppliance(World &world, Volume &volume, Seconds delay)
{
    changeAppliance(world, volume, Appliance::Connecting);
    volume.applianceSince = world.clock.now();
    volume.startedOnce = volume.resumes = true;
    later(world, volume, delay, [&world](Volume &connected) { goOnline(world, connected); });
}

void connectAppliance(World &world, Volume &volume)
{
    connectAppliance(world, volume, connectTime);
}

void stopAppliance(World &world, Volume &volume)
{
    changeAppliance(world, volume, Appliance::Stopped);
    volume.applianceSince = world.clock.now();
}

void removeOrphan(World &world, const std::string &container, const Done &done)
{
    const auto named = [container](const Orphan &orphan) { return orphan.container == container; };
    std::vector<Orphan> &orphans = world.state.orphans;
    const auto found = std::find_if(orphans.begin(), orphans.end(), named);
    for (const auto &[id, volume] : world.state.volumes) {
        if (containerOf(volume) == container) {
            throw Refusal(Refusal::Kind::Conflict,
                          container + " serves the volume " + volume.name + "; delete the volume instead.");
        }
    }
    if (found == orphans.end()) {
        throw Refusal(Refusal::Kind::Missing, "There is no appliance " + container + " on this computer.");
    }
    if (found->leaving) {
        throw Refusal(Refusal::Kind::Conflict, container + " is being removed already.");
    }
    found->leaving = true;
    world.clock.after(found->up ? orphanStopTime : Seconds(0.5), [&world, container, named, done] {
        std::erase_if(world.state.orphans, named);
        done(json::object{{"removed", container}});
    });
}

} // namespace quillfen::localagent
