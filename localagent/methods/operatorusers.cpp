// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/operator.h"
#include "localagent/world/users.h"

namespace quillfen::localagent {

namespace {

Parameter userId()
{
    return {.name = "user_id", .type = Type::Whole, .summary = "the user's id, as admin.users.list tells it"};
}

json::value users(const Call &call)
{
    return userRecords(call.world);
}

json::value tenants(const Call &call)
{
    return tenantRecords(call.world);
}

json::value approve(const Call &call)
{
    approveUser(call.world, call.params.whole("user_id"));
    return json::object{{"user_id", call.params.whole("user_id")}, {"state", "active"}};
}

json::value reject(const Call &call)
{
    rejectUser(call.world, call.params.whole("user_id"));
    return json::object{{"user_id", call.params.whole("user_id")}, {"state", "rejected"}};
}

json::value remove(const Call &call)
{
    deleteUser(call.world, call.params.whole("user_id"));
    return json::object{{"user_id", call.params.whole("user_id")}, {"deleted", true}};
}

} // namespace

std::vector<Method> userMethods()
{
    return {
        {.name = "admin.users.list",
         .http = "GET",
         .path = "/v1/admin/users",
         .summary = "The users of the service, those who wait for approval among them.",
         .handler = users},
        {.name = "admin.tenants.list",
         .http = "GET",
         .path = "/v1/admin/tenants",
         .summary = "The tenants, with what they have bought and what of it is in use.",
         .handler = tenants},
        {.name = "admin.users.approve",
         .http = "POST",
         .path = "/v1/admin/users/{user_id}/approve",
         .parameters = {userId()},
         .summary = "Lets a user in who has signed up.",
         .handler = approve},
        {.name = "admin.users.reject",
         .http = "POST",
         .path = "/v1/admin/users/{user_id}/reject",
         .parameters = {userId()},
         .summary = "Turns a user away who has signed up.",
         .handler = reject},
        {.name = "admin.users.delete",
         .http = "DELETE",
         .path = "/v1/admin/users/{user_id}",
         .parameters = {userId()},
         .summary = "Removes a user with all tokens.",
         .handler = remove},
    };
}

} // namespace quillfen::localagent
