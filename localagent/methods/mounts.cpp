// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/mounts.h"
#include "localagent/methods/subjects.h"
#include "localagent/world/records.h"
#include "localagent/world/views.h"

namespace quillfen::localagent {

namespace {

json::value state(const Call &call)
{
    return mountRecords(call.world);
}

json::value mount(const Call &call)
{
    const VolumeId id = call.params.whole("volume_id");
    const auto view = call.params.optionalText("view");
    const Mount &made = view ? attachView(call.world, id, *view) : attach(call.world, id);
    return json::object{{"mounted", true}, {"name", made.name}, {"mountpoint", made.folder}};
}

json::value unmount(const Call &call)
{
    const VolumeId id = call.params.whole("volume_id");
    if (const auto name = call.params.optionalText("name")) {
        detach(call.world, id, *name);
    } else {
        detach(call.world, id);
    }
    return json::object{{"mounted", false}};
}

} // namespace

std::vector<Method> mountMethods()
{
    return {
        {.name = "mount.state",
         .access = Access::Anyone,
         .local = true,
         .summary = "What is mounted on this computer.",
         .handler = state},
        {.name = "mount.attach",
         .parameters = {volumeId(), {.name = "view", .required = false, .summary = "an open view of the volume"}},
         .local = true,
         .summary = "Mounts a volume, or an open view of it, under ~/Quillfen.",
         .handler = mount},
        {.name = "mount.detach",
         .parameters = {volumeId(), {.name = "name", .required = false, .summary = "the mount's name"}},
         .local = true,
         .summary = "Unmounts a volume or a view.",
         .handler = unmount},
    };
}

} // namespace quillfen::localagent
