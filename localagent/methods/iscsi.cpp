// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/iscsi.h"

#include "localagent/methods/subjects.h"

namespace quillfen::localagent {

namespace {

// The appliance restarts its target for a change of the login.
constexpr Seconds chapTime{1.5};

json::value show(const Call &call)
{
    return iscsiRecord(call.world, volumeOf(call.world, call.params.whole("volume_id")));
}

json::value showLocal(const Call &call)
{
    return json::object{{"chap_password", localSecret(volumeOf(call.world, call.params.whole("volume_id")))}};
}

void change(const Call &call, const Done &done)
{
    World &world = call.world;
    const VolumeId id = call.params.whole("volume_id");
    const auto portal = call.params.optionalText("portal");
    const auto chap = call.params.optionalFlag("chap");
    if (!portal && !chap) {
        throw ParamsError("volumes.iscsi.set needs portal, a text, or chap, true or false");
    }
    changeTarget(world, id, portal, chap);
    const auto answer = [&world, id, done] {
        const auto found = world.state.volumes.find(id);
        if (found == world.state.volumes.end()) {
            done(Refusal(Refusal::Kind::Missing, "The volume was deleted meanwhile."));
        } else {
            done(iscsiRecord(world, found->second));
        }
    };
    if (chap) {
        world.clock.after(chapTime, answer);
    } else {
        answer();
    }
}

} // namespace

std::vector<Method> iscsiMethods()
{
    return {
        {.name = "volumes.iscsi",
         .http = "GET",
         .path = "/v1/volumes/{volume_id}/iscsi",
         .parameters = {volumeId()},
         .summary = "How other machines reach an iSCSI volume.",
         .handler = show},
        {.name = "volumes.iscsi.local",
         .parameters = {volumeId()},
         .local = true,
         .summary = "The CHAP secret as the appliance's log on this computer has it.",
         .handler = showLocal},
        {.name = "volumes.iscsi.set",
         .http = "PUT",
         .path = "/v1/volumes/{volume_id}/iscsi",
         .parameters = {volumeId(),
                        {.name = "portal", .required = false, .summary = "address for other machines; empty: none"},
                        {.name = "chap", .type = Type::Flag, .required = false, .summary = "whether CHAP is required"}},
         .summary = "Changes portal and login of an iSCSI volume.",
         .handler = change},
    };
}

} // namespace quillfen::localagent
