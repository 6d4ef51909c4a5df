// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/users.h"

#include <algorithm>

namespace quillfen::localagent {

namespace {

User &userOf(World &world, std::int64_t id)
{
    std::vector<User> &users = world.state.service.users;
    const auto found = std::ranges::find(users, id, &User::id);
    if (found == users.end()) {
        throw Refusal(Refusal::Kind::Missing, "There is no user " + std::to_string(id) + ".");
    }
    return *found;
}

User &pendingUserOf(World &world, std::int64_t id)
{
    User &user = userOf(world, id);
    if (user.state != "pending") {
        throw Refusal(Refusal::Kind::Conflict,
                      user.email + " does not wait for approval: the state is " + user.state + ".");
    }
    return user;
}

} // namespace

json::object userRecords(const World &world)
{
    json::array list;
    for (const User &user : world.state.service.users) {
        list.push_back(json::object{{"id", user.id},
                                    {"email", user.email},
                                    {"tenant_name", user.tenant},
                                    {"created_at", isoTime(user.created)},
                                    {"state", user.state}});
    }
    return {{"users", std::move(list)}};
}

json::object tenantRecords(const World &world)
{
    json::array list;
    for (const Tenant &tenant : world.state.service.tenants) {
        list.push_back(json::object{{"name", tenant.name},
                                    {"purchased_capacity_bytes", tenant.purchased},
                                    {"allocated_bytes", tenant.allocated},
                                    {"state", tenant.state}});
    }
    return {{"tenants", std::move(list)}};
}

void approveUser(World &world, std::int64_t id)
{
    User &user = pendingUserOf(world, id);
    user.state = "active";
    std::vector<Tenant> &tenants = world.state.service.tenants;
    if (std::ranges::find(tenants, user.tenant, &Tenant::name) == tenants.end()) {
        tenants.push_back({user.tenant, 0, 0, "active"});
    }
}

void rejectUser(World &world, std::int64_t id)
{
    pendingUserOf(world, id).state = "rejected";
}

void deleteUser(World &world, std::int64_t id)
{
    const std::string email = userOf(world, id).email;
    if (email == world.state.account.email) {
        throw Refusal(Refusal::Kind::Conflict, "You are signed in as " + email + ". Another operator has to do this.");
    }
    Service &service = world.state.service;
    std::erase_if(service.users, [id](const User &user) { return user.id == id; });
    std::erase_if(service.tokens, [&email](const ServiceToken &token) { return token.email == email; });
}

} // namespace quillfen::localagent
