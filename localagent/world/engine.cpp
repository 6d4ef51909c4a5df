// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/engine.h"

#include "localagent/world/appliances.h"
#include "localagent/world/records.h"

#include <array>

namespace quillfen::localagent {

namespace {

struct Step {
    Seconds at;
    const char *message;
};

constexpr std::array steps = {
    Step{Seconds(0), "Downloading the engine · 0% of 500 MB"},
    Step{Seconds(3), "Downloading the engine · 40% of 500 MB"},
    Step{Seconds(6), "Downloading the engine · 80% of 500 MB"},
    Step{Seconds(8), "Checking the download…"},
    Step{Seconds(9), "Installing the engine on this computer…"},
    Step{Seconds(11), "Starting the engine…"},
};
constexpr Seconds prepareTime{13};
constexpr Seconds startTime{4};

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

} // namespace quillfen::localagent
