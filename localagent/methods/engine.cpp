// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/engine.h"
#include "localagent/methods/subjects.h"
#include "localagent/world/appliances.h"
#include "localagent/world/records.h"

namespace quillfen::localagent {

namespace {

void requireRunning(const World &world)
{
    if (!world.state.engine.running()) {
        throw Refusal(Refusal::Kind::Conflict, "The engine is not running.");
    }
}

json::value status(const Call &call)
{
    return engineRecord(call.world);
}

json::value checks(const Call &call)
{
    return checkRecords(call.world);
}

void prepare(const Call &call, const Done &done)
{
    prepareEngine(call.world, done);
}

void start(const Call &call, const Done &done)
{
    startEngine(call.world, done);
}

void stop(const Call &call, const Done &done)
{
    stopEngineSafely(call.world, done);
}

json::value listAppliances(const Call &call)
{
    requireRunning(call.world);
    return applianceRecords(call.world);
}

json::value listOrphans(const Call &call)
{
    requireRunning(call.world);
    return orphanRecords(call.world);
}

void deployAppliance(const Call &call, const Done &done)
{
    deploy(call.world, call.params.whole("volume_id"), done);
}

void removeAppliance(const Call &call, const Done &done)
{
    requireRunning(call.world);
    removeOrphan(call.world, call.params.text("container"), done);
}

} // namespace

std::vector<Method> engineMethods()
{
    return {
        {.name = "vm.status",
         .access = Access::Anyone,
         .local = true,
         .summary = "The engine on this computer.",
         .handler = status},
        {.name = "vm.prepare",
         .local = true,
         .summary = "Sets the engine up. Answers when it runs; reports progress as vm.progress.",
         .handler = prepare},
        {.name = "vm.start", .local = true, .summary = "Starts the engine. Answers when it runs.", .handler = start},
        {.name = "engine.stop_safely",
         .local = true,
         .summary = "Uploads and unmounts everything, then stops the engine. Answers when it has stopped; reports "
                    "progress as vm.progress.",
         .handler = stop},
        {.name = "preflight.run",
         .access = Access::Anyone,
         .local = true,
         .summary = "What the engine needs of this computer, and what fixes it.",
         .handler = checks},
        {.name = "appliance.list",
         .local = true,
         .summary = "The appliances on this computer.",
         .handler = listAppliances},
        {.name = "appliance.orphans",
         .local = true,
         .summary = "The appliances on this computer whose volume is not in the account.",
         .handler = listOrphans},
        {.name = "appliance.deploy",
         .parameters = {volumeId()},
         .local = true,
         .summary = "Starts a volume's appliance. Answers when its container runs; reports appliance.progress.",
         .handler = deployAppliance},
        {.name = "appliance.remove",
         .parameters = {{.name = "container", .summary = "the appliance's name, as appliance.orphans tells it"}},
         .local = true,
         .summary = "Stops and removes an appliance that has no volume in the account.",
         .handler = removeAppliance},
    };
}

} // namespace quillfen::localagent
