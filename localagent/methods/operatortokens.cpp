// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/operator.h"
#include "localagent/world/servicetokens.h"

namespace quillfen::localagent {

namespace {

json::value list(const Call &call)
{
    return serviceTokenRecords(call.world);
}

json::value revoke(const Call &call)
{
    revokeServiceToken(call.world, call.params.whole("token_id"));
    return json::object{{"token_id", call.params.whole("token_id")}, {"revoked", true}};
}

json::value prune(const Call &call)
{
    return json::object{{"pruned", pruneServiceTokens(call.world)}};
}

} // namespace

std::vector<Method> serviceTokenMethods()
{
    return {
        {.name = "admin.tokens.list",
         .http = "GET",
         .path = "/v1/admin/tokens",
         .summary = "Every token of the service.",
         .handler = list},
        {.name = "admin.tokens.revoke",
         .http = "DELETE",
         .path = "/v1/admin/tokens/{token_id}",
         .parameters = {{.name = "token_id",
                         .type = Type::Whole,
                         .summary = "the token's id, as admin.tokens.list tells it"}},
         .summary = "Ends a token. Whatever uses it stops working.",
         .handler = revoke},
        {.name = "admin.tokens.prune",
         .http = "POST",
         .path = "/v1/admin/tokens/prune",
         .summary = "Removes the revoked tokens from the list for good.",
         .handler = prune},
    };
}

} // namespace quillfen::localagent
