// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/operator.h"
#include "localagent/world/hubs.h"

namespace quillfen::localagent {

namespace {

constexpr Seconds pollTime{0.6};
constexpr Seconds scanTime{1.2};
constexpr Seconds preflightTime{1.5};
constexpr Seconds demoteTime{2};
constexpr Seconds wipeTime{3};

Parameter siteId()
{
    return {.name = "site_id", .type = Type::Whole, .summary = "the hub's id, as admin.hubs.list tells it"};
}

Parameter hubName()
{
    return {.name = "name", .summary = "what the hub is to be called, like hub-e"};
}

Parameter hubAddress()
{
    return {.name = "address", .summary = "host and port of the machine, like 10.40.2.14:8443"};
}

json::value list(const Call &call)
{
    return hubRecords(call.world);
}

json::value replication(const Call &call)
{
    return replicationRecord(call.world);
}

json::value promoteStatus(const Call &call)
{
    return promotionRecord(call.world);
}

/// Answers with the hub as it is after `time`, if it is still there.
void answerLater(World &world, std::int64_t id, Seconds time, const Done &done)
{
    world.clock.after(time, [&world, id, done] {
        try {
            done(hubRecord(world, hubOf(world, id)));
        } catch (const Refusal &refusal) {
            done(refusal);
        }
    });
}

void poll(const Call &call, const Done &done)
{
    const std::int64_t id = call.params.whole("site_id");
    (void)hubOf(call.world, id);
    answerLater(call.world, id, pollTime, done);
}

void rescan(const Call &call, const Done &done)
{
    const std::int64_t id = call.params.whole("site_id");
    (void)hubOf(call.world, id);
    answerLater(call.world, id, scanTime, done);
}

json::value startPromotion(const Call &call)
{
    promote(call.world, call.params.whole("site_id"));
    return promotionRecord(call.world);
}

void stepDown(const Call &call, const Done &done)
{
    World &world = call.world;
    const std::int64_t id = call.params.whole("site_id");
    requireDemotable(world, id);
    world.clock.after(demoteTime, [&world, id, done] {
        try {
            demote(world, id);
            done(hubRecord(world, hubOf(world, id)));
        } catch (const Refusal &refusal) {
            done(refusal);
        }
    });
}

void leave(const Call &call, const Done &done)
{
    World &world = call.world;
    const std::int64_t id = call.params.whole("site_id");
    const bool wiped = call.params.optionalFlag("wipe").value_or(false);
    beginRetiring(world, id, call.params.optionalFlag("force").value_or(false));
    world.clock.after(wipeTime, [&world, id, wiped, done] {
        retire(world, id);
        done(json::object{{"site_id", id}, {"retired", true}, {"wiped", wiped}});
    });
}

void look(const Call &call, const Done &done)
{
    const json::object found = preflight(call.world, call.params.text("name"), call.params.text("address"));
    call.world.clock.after(preflightTime, [found, done] { done(found); });
}

json::value add(const Call &call)
{
    const std::int64_t id =
        addHub(call.world, call.params.text("name"), call.params.text("address"), call.params.text("fingerprint"));
    return hubRecord(call.world, hubOf(call.world, id));
}

json::value startBuild(const Call &call)
{
    const std::int64_t id = call.params.whole("site_id");
    build(call.world, id);
    return hubRecord(call.world, hubOf(call.world, id));
}

} // namespace

std::vector<Method> hubMethods()
{
    return {
        {.name = "admin.hubs.list",
         .http = "GET",
         .path = "/v1/admin/hubs",
         .summary = "The hubs of the service.",
         .handler = list},
        {.name = "admin.hubs.replication",
         .http = "GET",
         .path = "/v1/admin/hubs/replication",
         .summary = "How far the other hubs are behind the one that serves.",
         .handler = replication},
        {.name = "admin.hubs.promote_status",
         .http = "GET",
         .path = "/v1/admin/hubs/promotion",
         .summary = "Whether a hub is being promoted, and how far that is.",
         .handler = promoteStatus},
        {.name = "admin.hubs.poll",
         .http = "POST",
         .path = "/v1/admin/hubs/{site_id}/poll",
         .parameters = {siteId()},
         .summary = "Asks a hub for its state now.",
         .handler = poll},
        {.name = "admin.hubs.rescan",
         .http = "POST",
         .path = "/v1/admin/hubs/{site_id}/rescan",
         .parameters = {siteId()},
         .summary = "Has a hub look at its disks again.",
         .handler = rescan},
        {.name = "admin.hubs.promote",
         .http = "POST",
         .path = "/v1/admin/hubs/{site_id}/promote",
         .parameters = {siteId()},
         .summary = "Makes a hub the one that serves, once it has caught up.",
         .handler = startPromotion},
        {.name = "admin.hubs.demote",
         .http = "POST",
         .path = "/v1/admin/hubs/{site_id}/demote",
         .parameters = {siteId()},
         .summary = "Ends the service of a hub that another has followed.",
         .handler = stepDown},
        {.name = "admin.hubs.retire",
         .http = "DELETE",
         .path = "/v1/admin/hubs/{site_id}",
         .parameters = {siteId(),
                        {.name = "force",
                         .type = Type::Flag,
                         .required = false,
                         .summary = "gives up the copy of the vault that the hub holds"},
                        {.name = "wipe",
                         .type = Type::Flag,
                         .required = false,
                         .summary = "removes everything of Quill from its machine"}},
         .summary = "Removes a hub that does not serve.",
         .handler = leave},
        {.name = "admin.hubs.preflight",
         .http = "POST",
         .path = "/v1/admin/hubs/preflight",
         .parameters = {hubName(), hubAddress()},
         .summary = "Looks at a machine that is to become a hub, and tells its host key.",
         .handler = look},
        {.name = "admin.hubs.add",
         .http = "POST",
         .path = "/v1/admin/hubs",
         .parameters = {hubName(),
                        hubAddress(),
                        {.name = "fingerprint", .summary = "the host key that the preflight told"}},
         .summary = "Registers a machine as a hub.",
         .handler = add},
        {.name = "admin.hubs.build.set",
         .http = "PUT",
         .path = "/v1/admin/hubs/{site_id}/build",
         .parameters = {siteId()},
         .summary = "Builds a registered hub; it joins the replication by itself.",
         .handler = startBuild},
    };
}

} // namespace quillfen::localagent
