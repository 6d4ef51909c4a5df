// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/engine.h"

#include "localagent/world/appliances.h"
#include "localagent/world/mounts.h"
#include "localagent/world/records.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace quillfen::localagent {

namespace {

struct Step {
    Seconds at;
    const char *message;
};

constexpr std::array steps = {
    Step{Seconds(1), "Downloading the engine · 0% of 500 MB"},
    Step{Seconds(3), "Downloading the engine · 40% of 500 MB"},
    Step{Seconds(6), "Downloading the engine · 80% of 500 MB"},
    Step{Seconds(8), "Checking the download…"},
    Step{Seconds(9), "Installing the engine on this computer…"},
    Step{Seconds(11), "Starting the engine…"},
};
constexpr Seconds prepareTime{13};
constexpr Seconds startTime{4};
constexpr Seconds stopTime{3};
constexpr Seconds longestSilence{20}; ///< between two reports of an upload
constexpr Seconds comingUpTime{2};
constexpr Seconds justAfter{0.1}; ///< what was being waited for

/// What is left of an upload; less than a tenth of a GB in MB, so that the last of it does not read as nothing.
std::string leftText(std::int64_t bytes)
{
    constexpr std::int64_t megabyte = gigabyte >> 10U;
    return (bytes < gigabyte / 10 ? std::to_string(std::max<std::int64_t>(1, bytes / megabyte)) + " MB"
                                  : sizeText(bytes)) +
           " left";
}

void running(World &world)
{
    world.state.engine.status = "Running";
    announceEngine(world);
    for (const VolumeId id : world.state.order) {
        Volume &volume = world.state.volumes.at(id);
        if (volume.appliance == Appliance::Stopped && volume.resumes && volume.busyWith.empty()) {
            connectAppliance(world, volume);
        }
    }
}

bool runsHere(const Volume &volume)
{
    return volume.appliance == Appliance::Starting || volume.appliance == Appliance::Connecting ||
           volume.appliance == Appliance::Online;
}

/// An appliance that is still coming up may hold changes that it cannot upload yet.
bool isDrained(const World &world, const Volume &volume)
{
    return volume.appliance != Appliance::Starting && pendingBytes(world, volume) == 0;
}

void finishStop(World &world, const Done &done)
{
    Engine &engine = world.state.engine;
    engine.status = "Stopped";
    engine.stopping = false;
    for (Orphan &orphan : world.state.orphans) {
        if (std::exchange(orphan.up, false)) {
            orphan.since = world.clock.now();
        }
    }
    announceEngine(world);
    done(engineRecord(world));
}

void takeDown(World &world, Volume &volume)
{
    if (mountOf(world, volume.id) != nullptr) {
        detach(world, volume.id);
    }
    stopAppliance(world, volume);
}

std::string waitingText(const World &world, const Volume &volume, std::size_t others)
{
    const std::int64_t pending = pendingBytes(world, volume);
    std::string text = pending == 0 ? "Waiting for " + volume.name + " to come up"
                                    : "Uploading the last changes of " + volume.name + " · " + leftText(pending);
    return others == 0 ? text : text + " · " + std::to_string(others) + " more to go";
}

/// Takes down what has nothing left to upload, tells of the rest and comes back to it, until nothing is left.
void drain(World &world, const Done &done)
{
    std::vector<const Volume *> waiting;
    for (const VolumeId id : world.state.order) {
        Volume &volume = world.state.volumes.at(id);
        if (!runsHere(volume)) {
            continue;
        }
        if (isDrained(world, volume)) {
            takeDown(world, volume);
        } else {
            waiting.push_back(&volume);
        }
    }
    if (waiting.empty()) {
        world.state.engine.status = "Stopping";
        announceEngine(world);
        announceProgress(world, "vm.progress", "Stopping the engine…");
        world.clock.after(stopTime, [&world, done] { finishStop(world, done); });
        return;
    }
    announceProgress(world, "vm.progress", waitingText(world, *waiting.front(), waiting.size() - 1));
    Seconds next = longestSilence;
    for (const Volume *const volume : waiting) {
        const bool uploads = volume->appliance == Appliance::Online;
        next = std::min(next, uploads ? uploadTime(world, *volume) : comingUpTime);
    }
    world.clock.after(next + justAfter, [&world, done] { drain(world, done); });
}

} // namespace

void prepareEngine(World &world, const Done &done)
{
    Engine &engine = world.state.engine;
    if (engine.exists) {
        done(engineRecord(world));
        return;
    }
    if (engine.preparing) {
        throw Refusal(Refusal::Kind::Conflict, "The engine is being set up already.");
    }
    engine.preparing = true;
    for (const Step &step : steps) {
        world.clock.after(step.at,
                          [&world, message = step.message] { announceProgress(world, "vm.progress", message); });
    }
    world.clock.after(prepareTime, [&world, done] {
        world.state.engine.preparing = false;
        world.state.engine.exists = true;
        running(world);
        done(engineRecord(world));
    });
}

void startEngine(World &world, const Done &done)
{
    Engine &engine = world.state.engine;
    if (!engine.exists) {
        throw Refusal(Refusal::Kind::Conflict, "The engine is not set up yet. Set it up first.");
    }
    if (engine.stopping) {
        throw Refusal(Refusal::Kind::Conflict, "The engine is being stopped; start it when that is done.");
    }
    if (engine.running()) {
        done(engineRecord(world));
        return;
    }
    if (engine.status == "Starting") {
        throw Refusal(Refusal::Kind::Conflict, "The engine is starting already.");
    }
    engine.status = "Starting";
    announceEngine(world);
    world.clock.after(startTime, [&world, done] {
        running(world);
        done(engineRecord(world));
    });
}

void stopEngineSafely(World &world, const Done &done)
{
    Engine &engine = world.state.engine;
    if (!engine.exists) {
        throw Refusal(Refusal::Kind::Conflict, "The engine is not set up yet; there is nothing to stop.");
    }
    if (engine.stopping) {
        throw Refusal(Refusal::Kind::Conflict, "The engine is being stopped already.");
    }
    if (!engine.running()) {
        throw Refusal(Refusal::Kind::Conflict, "The engine is not running.");
    }
    for (const VolumeId id : world.state.order) {
        if (runsHere(world.state.volumes.at(id))) {
            [[maybe_unused]] const Volume &idle = idleVolumeOf(world, id); // a refusal names what is going on
        }
    }
    engine.stopping = true;
    drain(world, done);
}

} // namespace quillfen::localagent
