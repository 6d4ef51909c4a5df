// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/operator.h"
#include "localagent/world/orders.h"

namespace quillfen::localagent {

namespace {

Parameter jobId()
{
    return {.name = "job_id", .type = Type::Whole, .summary = "the order's number, as admin.exports.list tells it"};
}

json::value list(const Call &call)
{
    return orderRecords(call.world);
}

json::value ship(const Call &call)
{
    shipOrder(call.world, call.params.whole("job_id"), call.params.optionalText("carrier").value_or(""),
              call.params.optionalText("tracking").value_or(""));
    return json::object{{"job_id", call.params.whole("job_id")}, {"state", "shipped"}};
}

json::value remove(const Call &call)
{
    deleteOrder(call.world, call.params.whole("job_id"));
    return json::object{{"job_id", call.params.whole("job_id")}, {"deleted", true}};
}

} // namespace

std::vector<Method> orderMethods()
{
    return {
        {.name = "admin.exports.list",
         .http = "GET",
         .path = "/v1/admin/exports",
         .summary = "The copies and media orders of all tenants.",
         .handler = list},
        {.name = "admin.exports.ship",
         .http = "POST",
         .path = "/v1/admin/exports/{job_id}/ship",
         .parameters = {jobId(),
                        {.name = "carrier", .required = false, .summary = "who carries it"},
                        {.name = "tracking", .required = false, .summary = "the carrier's number for it"}},
         .summary = "Marks a packed medium as sent.",
         .handler = ship},
        {.name = "admin.exports.delete",
         .http = "DELETE",
         .path = "/v1/admin/exports/{job_id}",
         .parameters = {jobId()},
         .summary = "Removes a packed copy from the hub.",
         .handler = remove},
    };
}

} // namespace quillfen::localagent
