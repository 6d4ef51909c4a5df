// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/policy.h"
#include "localagent/methods/subjects.h"
#include "localagent/world/points.h"

namespace quillfen::localagent {

namespace {

json::value show(const Call &call)
{
    return json::object{{"output", policyText(volumeOf(call.world, call.params.whole("volume_id")).policy)}};
}

json::value set(const Call &call)
{
    const VolumeId id = call.params.whole("volume_id");
    setPolicy(call.world, id, policyFrom(call.params.text("policy")));
    return json::object{{"output", policyText(volumeOf(call.world, id).policy)}};
}

json::value pin(const Call &call)
{
    Volume &volume = idleVolumeOf(call.world, call.params.whole("volume_id"));
    pinPoint(call.world, volume, call.params.optionalText("label").value_or(""));
    const auto &[moment, label] = *volume.history.pinned.rbegin();
    return json::object{{"timestamp", isoTime(moment)}, {"label", label}};
}

} // namespace

std::vector<Method> policyMethods()
{
    return {
        {.name = "history.show",
         .http = "GET",
         .path = "/v1/volumes/{volume_id}/history",
         .parameters = {volumeId()},
         .summary = "How long a volume's history is kept: six numbers, finest tier first.",
         .handler = show},
        {.name = "history.set",
         .http = "PUT",
         .path = "/v1/volumes/{volume_id}/history",
         .parameters = {volumeId(),
                        {.name = "policy",
                         .summary = "six whole numbers with commas between them: minutes of every second, hours of "
                                    "every minute, days of every hour, weeks of every day, months of every week, years "
                                    "of every month"}},
         .summary = "Sets how long a volume's history is kept.",
         .handler = set},
        {.name = "volumes.snapshots",
         .http = "POST",
         .path = "/v1/volumes/{volume_id}/snapshots",
         .parameters = {volumeId(), {.name = "label", .required = false, .summary = "what the point is called"}},
         .summary = "Pins the present moment: a restore point that stays whatever the policy says.",
         .handler = pin},
    };
}

} // namespace quillfen::localagent
