// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/hubs.h"

#include "localagent/world/machines.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>

namespace quillfen::localagent {

namespace {

/// A hub is never nearer than this: the way there takes its time.
constexpr double leastLag = 0.8;
/// Below it a hub may take over.
constexpr double promotionLag = 5.0;
/// Seconds that a hub catches up in one.
constexpr double catchingUp = 0.5;
/// How far a hub is behind that has only just been built.
constexpr double newLag = 60.0;
constexpr Seconds checkTime{2};
constexpr Seconds switchTime{2};
constexpr Seconds buildTime{30};

std::string lagText(double lag)
{
    std::ostringstream text;
    text << std::fixed << std::setprecision(lag < 10 ? 1 : 0) << lag << " s";
    return text.str();
}

bool follows(const Hub &hub)
{
    return hub.life == HubLife::Replica;
}

bool serves(const Hub &hub)
{
    return hub.life == HubLife::Primary || hub.life == HubLife::HandingOver;
}

std::string roleOf(const Hub &hub)
{
    return serves(hub) ? "primary" : follows(hub) || hub.life == HubLife::Retiring ? "replica" : "";
}

std::string stateOf(const World &world, const Hub &hub)
{
    switch (hub.life) {
    case HubLife::Registered:
        return "registered";
    case HubLife::Building:
        return "building";
    case HubLife::Primary:
        return "serving";
    case HubLife::HandingOver:
        return "handing over";
    case HubLife::Retiring:
        return "retiring";
    case HubLife::Replica:
        break;
    }
    return lagOf(world, hub) < promotionLag ? "ready" : "catching up";
}

Hub *primaryOf(World &world)
{
    std::vector<Hub> &hubs = world.state.service.hubs;
    const auto found = std::ranges::find(hubs, HubLife::Primary, &Hub::life);
    return found == hubs.end() ? nullptr : &*found;
}

std::string primaryName(const World &world)
{
    const std::vector<Hub> &hubs = world.state.service.hubs;
    const auto found = std::ranges::find(hubs, HubLife::Primary, &Hub::life);
    return found == hubs.end() ? "no hub" : found->name;
}

void finishPromotion(World &world)
{
    Promotion &promotion = world.state.service.promotion;
    if (Hub *const before = primaryOf(world)) {
        before->life = HubLife::HandingOver;
    }
    Hub &hub = hubOf(world, promotion.hub);
    hub.life = HubLife::Primary;
    hub.busyWith.clear();
    promotion = {};
}

void switchOver(World &world)
{
    world.state.service.promotion.state = "switching";
    world.clock.after(switchTime, [&world] { finishPromotion(world); });
}

void waitForLag(World &world)
{
    Promotion &promotion = world.state.service.promotion;
    const double behind = lagOf(world, hubOf(world, promotion.hub));
    if (behind < promotionLag) {
        switchOver(world);
        return;
    }
    promotion.state = "catching up";
    // A little longer than it takes, so that the lag is below the limit and not at it.
    world.clock.after(Seconds((behind - promotionLag) / catchingUp + 0.1), [&world] { waitForLag(world); });
}

void requireIdle(const Hub &hub)
{
    if (!hub.busyWith.empty()) {
        throw Refusal(Refusal::Kind::Conflict, hub.name + " is " + hub.busyWith + ". Wait until that has ended.");
    }
}

} // namespace

Hub &hubOf(World &world, std::int64_t id)
{
    std::vector<Hub> &hubs = world.state.service.hubs;
    const auto found = std::ranges::find(hubs, id, &Hub::id);
    if (found == hubs.end()) {
        throw Refusal(Refusal::Kind::Missing, "There is no hub " + std::to_string(id) + ".");
    }
    return *found;
}

double lagOf(const World &world, const Hub &hub)
{
    const double passed = Seconds(world.clock.now() - hub.lagAt).count();
    return std::max(leastLag, hub.lag - passed * catchingUp);
}

json::object hubRecord(const World &world, const Hub &hub)
{
    json::object record = {{"id", hub.id},
                           {"name", hub.name},
                           {"role", roleOf(hub)},
                           {"address", hub.address},
                           {"state", stateOf(world, hub)}};
    if (hub.sold) {
        record["sold_pct"] = *hub.sold;
    }
    return record;
}

json::object hubRecords(const World &world)
{
    json::array list;
    for (const Hub &hub : world.state.service.hubs) {
        list.push_back(hubRecord(world, hub));
    }
    return {{"hubs", std::move(list)}};
}

json::object replicationRecord(const World &world)
{
    json::array replicas;
    int near = 0;
    for (const Hub &hub : world.state.service.hubs) {
        if (!follows(hub)) {
            continue;
        }
        const double lag = lagOf(world, hub);
        near += lag < promotionLag ? 1 : 0;
        replicas.push_back(json::object{{"id", hub.id},
                                        {"name", hub.name},
                                        {"address", hub.address},
                                        {"state", lag < promotionLag ? "streaming" : "catching up"},
                                        {"lag", lagText(lag)}});
    }
    const std::string count = std::to_string(replicas.size());
    std::string summary =
        count + " of " + count + " replicas connected; " + std::to_string(near) + " within the promotion limit.";
    return {{"replicas", std::move(replicas)}, {"summary", std::move(summary)}};
}

json::object promotionRecord(const World &world)
{
    const Service &service = world.state.service;
    const auto hub = std::ranges::find(service.hubs, service.promotion.hub, &Hub::id);
    std::string detail;
    if (service.promotion.state == "checking" && hub != service.hubs.end()) {
        detail = "comparing the identity of " + hub->name + " with " + primaryName(world);
    } else if (service.promotion.state == "catching up" && hub != service.hubs.end()) {
        detail = hub->name + " is " + lagText(lagOf(world, *hub)) + " behind " + primaryName(world) +
                 "; identity check passed, waiting for lag below 5 s";
    } else if (service.promotion.state == "switching" && hub != service.hubs.end()) {
        detail = hub->name + " takes over from " + primaryName(world);
    }
    return {{"state", service.promotion.state}, {"detail", detail}};
}

void promote(World &world, std::int64_t id)
{
    Hub &hub = hubOf(world, id);
    Promotion &promotion = world.state.service.promotion;
    if (serves(hub)) {
        throw Refusal(Refusal::Kind::Conflict, hub.name + " serves already.");
    }
    if (promotion.state != "idle") {
        throw Refusal(Refusal::Kind::Conflict,
                      hubOf(world, promotion.hub).name + " is being promoted. Wait until that has ended.");
    }
    if (!follows(hub)) {
        throw Refusal(Refusal::Kind::Conflict,
                      hub.name + " is " + stateOf(world, hub) + ". Only a replica that is connected can be promoted.");
    }
    requireIdle(hub);
    hub.busyWith = "being promoted";
    promotion = {"checking", id};
    world.clock.after(checkTime, [&world] { waitForLag(world); });
}

void resumePromotion(World &world, std::int64_t id)
{
    hubOf(world, id).busyWith = "being promoted";
    world.state.service.promotion = {"catching up", id};
    waitForLag(world);
}

void requireDemotable(World &world, std::int64_t id)
{
    const Hub &hub = hubOf(world, id);
    if (!serves(hub)) {
        throw Refusal(Refusal::Kind::Conflict, hub.name + " does not serve.");
    }
    if (hub.life == HubLife::Primary) {
        throw Refusal(Refusal::Kind::Conflict, hub.name + " is the only hub that serves. Promote another one first.");
    }
    requireIdle(hub);
}

void demote(World &world, std::int64_t id)
{
    requireDemotable(world, id);
    Hub &hub = hubOf(world, id);
    hub.life = HubLife::Replica;
    hub.lag = leastLag;
    hub.lagAt = world.clock.now();
}

void beginRetiring(World &world, std::int64_t id, bool force)
{
    Hub &hub = hubOf(world, id);
    if (serves(hub)) {
        throw Refusal(Refusal::Kind::Conflict,
                      hub.name + " is serving. Promote another hub and demote this one first.");
    }
    requireIdle(hub);
    if (!force && follows(hub)) {
        throw Refusal(Refusal::Kind::Conflict, hub.name + " holds a copy of the vault. Give it up with force.");
    }
    hub.life = HubLife::Retiring;
    hub.busyWith = "being retired";
}

void retire(World &world, std::int64_t id)
{
    std::erase_if(world.state.service.hubs, [id](const Hub &hub) { return hub.id == id; });
}

json::object preflight(const World &world, const std::string &name, const std::string &address)
{
    requireHubName(world, name);
    requireHubAddress(world, address);
    return {{"fingerprint", hostKeyOf(address)},
            {"summary", "Debian 12, 16 cores, 64 GB of memory, 40 TB on 8 disks; nothing of Quill on it yet."}};
}

std::int64_t addHub(World &world, const std::string &name, const std::string &address, const std::string &fingerprint)
{
    requireHubName(world, name);
    requireHubAddress(world, address);
    if (fingerprint != hostKeyOf(address)) {
        throw Refusal(Refusal::Kind::Conflict,
                      "The machine at " + address + " has another host key than the preflight saw. Run it again.");
    }
    Service &service = world.state.service;
    Hub hub;
    hub.id = ++service.lastId;
    hub.name = name;
    hub.address = address;
    hub.fingerprint = fingerprint;
    hub.life = HubLife::Registered;
    service.hubs.push_back(std::move(hub));
    return service.lastId;
}

void build(World &world, std::int64_t id)
{
    Hub &hub = hubOf(world, id);
    if (hub.life != HubLife::Registered) {
        throw Refusal(Refusal::Kind::Conflict, hub.name + " is " + stateOf(world, hub) + " and needs no build.");
    }
    hub.life = HubLife::Building;
    world.clock.after(buildTime, [&world, id] {
        std::vector<Hub> &hubs = world.state.service.hubs;
        const auto built = std::ranges::find(hubs, id, &Hub::id);
        if (built == hubs.end() || built->life != HubLife::Building) {
            return;
        }
        built->life = HubLife::Replica;
        built->sold = 0;
        built->lag = newLag;
        built->lagAt = world.clock.now();
    });
}

} // namespace quillfen::localagent
