// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/servicefile.h"

#include "localagent/world/hubs.h"

#include <algorithm>
#include <array>

namespace quillfen::localagent {

namespace {

std::int64_t idFor(World &world, const Fields &fields)
{
    Service &service = world.state.service;
    const std::int64_t id = fields.whole("id", service.lastId + 1);
    service.lastId = std::max(service.lastId, id);
    return id;
}

HubLife lifeNamed(const Fields &fields)
{
    const std::string life = fields.text("life", "replica");
    if (life == "primary") {
        return HubLife::Primary;
    }
    if (life == "replica") {
        return HubLife::Replica;
    }
    if (life == "building") {
        return HubLife::Building;
    }
    if (life == "registered") {
        return HubLife::Registered;
    }
    fields.fail("life", "is none of primary, replica, building, registered");
}

void loadHub(World &world, const Fields &fields)
{
    Hub hub;
    hub.id = idFor(world, fields);
    hub.name = fields.text("name");
    hub.address = fields.text("address");
    hub.life = lifeNamed(fields);
    hub.lag = fields.number("lag");
    hub.lagAt = world.clock.now();
    if (fields.has("sold_pct")) {
        hub.sold = fields.whole("sold_pct");
    }
    world.state.service.hubs.push_back(std::move(hub));
}

void loadPromotion(World &world, const Fields &fields)
{
    const std::string name = fields.text("promoting");
    if (name.empty()) {
        return;
    }
    const std::vector<Hub> &hubs = world.state.service.hubs;
    const auto hub = std::ranges::find(hubs, name, &Hub::name);
    if (hub == hubs.end()) {
        fields.fail("promoting", "names no hub of this world");
    }
    resumePromotion(world, hub->id);
}

void loadUser(World &world, const Fields &fields)
{
    world.state.service.users.push_back({idFor(world, fields), fields.text("email"), fields.text("tenant"),
                                         fields.moment("created", world.clock.now(), "-1d"),
                                         fields.text("state", "active")});
}

void loadTenant(World &world, const Fields &fields)
{
    world.state.service.tenants.push_back({fields.text("name"), fields.size("purchased_gb"),
                                           fields.size("allocated_gb"), fields.text("state", "active")});
}

void loadToken(World &world, const Fields &fields)
{
    const Time now = world.clock.now();
    ServiceToken token{idFor(world, fields),
                       fields.text("label"),
                       fields.text("email"),
                       fields.moment("created", now, "-1d"),
                       fields.moment("expires", now, "+365d"),
                       {}};
    if (fields.has("revoked")) {
        token.revoked = fields.moment("revoked", now);
    }
    world.state.service.tokens.push_back(std::move(token));
}

void loadOrder(World &world, const Fields &fields)
{
    world.state.service.orders.push_back({idFor(world, fields),
                                          fields.text("volume"),
                                          fields.text("tenant"),
                                          fields.text("delivery", "link"),
                                          fields.text("state", "ready"),
                                          fields.text("medium"),
                                          {},
                                          {}});
}

// std::uniform_int_distribution answers differently from library to library; a world must not.
std::size_t pick(World &world, std::size_t count)
{
    return static_cast<std::size_t>(world.random() % count);
}

constexpr std::array<std::string_view, 16> firstNames = {"ada",  "bruno", "Chidi", "dagny", "emre", "farida",
                                                         "gao",  "hanne", "ivo",   "Jonas", "kiri", "ludmila",
                                                         "mara", "noor",  "Oskar", "priya"};
constexpr std::array<std::string_view, 12> houses = {"tidewater", "northmere", "lowfen",   "copperline",
                                                     "ashdown",   "brackish",  "Häuser",   "kestrel",
                                                     "marram",    "quarry",    "saltings", "weir"};
constexpr std::array<std::string_view, 6> uses = {"desktop:", "cli:", "backup script on ", "ci-", "nas-", ""};

void generate(World &world, const Fields &fields)
{
    Service &service = world.state.service;
    const Time now = world.clock.now();
    const std::int64_t users = fields.whole("users");
    const auto many = static_cast<std::size_t>(std::max<std::int64_t>(1, users));
    const auto house = [](std::size_t number) {
        return std::string(houses[number % houses.size()]) + "-" + std::to_string(number % 2000);
    };
    const auto email = [&](std::size_t number) {
        return std::string(firstNames[number % firstNames.size()]) + "." + std::to_string(number) + "@" +
               house(number * 7) + ".example";
    };
    for (std::int64_t number = 0; number < users; ++number) {
        const auto at = static_cast<std::size_t>(number);
        const std::size_t luck = pick(world, 40);
        service.users.push_back({++service.lastId, email(at), house(at * 7),
                                 now - std::chrono::hours(1 + pick(world, 20'000)),
                                 luck == 0   ? "pending"
                                 : luck == 1 ? "closing"
                                             : "active"});
    }
    for (std::size_t number = 0; number < std::min<std::size_t>(many, 2000) && users > 0; ++number) {
        const std::int64_t bought = gigabyte * static_cast<std::int64_t>(64 + pick(world, 8000));
        service.tenants.push_back(
            {house(number * 7), bought, bought / 100 * static_cast<std::int64_t>(pick(world, 100)), "active"});
    }
    for (std::int64_t number = 0; number < fields.whole("tokens"); ++number) {
        const std::string_view use = uses[pick(world, uses.size())];
        const std::size_t owner = pick(world, many);
        ServiceToken token{++service.lastId,
                           use.empty() ? std::string() : std::string(use) + house(owner),
                           email(owner),
                           now - std::chrono::hours(1 + pick(world, 9000)),
                           now + std::chrono::hours(1 + pick(world, 9000)),
                           {}};
        if (pick(world, 4) == 0) {
            token.revoked = now - std::chrono::minutes(1 + pick(world, 9000));
        }
        service.tokens.push_back(std::move(token));
    }
    for (std::int64_t number = 0; number < fields.whole("orders"); ++number) {
        const bool media = pick(world, 3) == 0;
        service.orders.push_back({++service.lastId,
                                  "archive-" + std::to_string(number),
                                  house(pick(world, many)),
                                  media ? "media" : "link",
                                  pick(world, 5) == 0 ? "packing" : "ready",
                                  media ? "LTO-8 tape" : "",
                                  {},
                                  {}});
    }
}

} // namespace

void loadService(World &world, const Fields &fields)
{
    for (const Fields &hub : fields.objects("hubs")) {
        loadHub(world, hub);
    }
    loadPromotion(world, fields);
    for (const Fields &user : fields.objects("users")) {
        loadUser(world, user);
    }
    for (const Fields &tenant : fields.objects("tenants")) {
        loadTenant(world, tenant);
    }
    for (const Fields &token : fields.objects("tokens")) {
        loadToken(world, token);
    }
    for (const Fields &order : fields.objects("orders")) {
        loadOrder(world, order);
    }
    generate(world, fields.object("generate"));
}

} // namespace quillfen::localagent
