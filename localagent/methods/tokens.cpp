// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/tokens.h"

#include "localagent/methods/subjects.h"

namespace quillfen::localagent {

namespace {

json::value list(const Call &call)
{
    return tokenRecords(call.world);
}

json::value create(const Call &call)
{
    return createToken(call.world, call.params.text("label"), call.params.optionalWhole("expires_in_days"));
}

json::value revoke(const Call &call)
{
    const std::string id = call.params.text("token_id");
    revokeToken(call.world, id);
    return json::object{{"token_id", id}, {"revoked", true}};
}

json::value enrolCode(const Call &call)
{
    return json::object{{"code", createEnrolmentCode(call.world)}, {"label", call.params.text("label")}};
}

} // namespace

std::vector<Method> tokenMethods()
{
    return {
        {.name = "auth.tokens.list",
         .http = "GET",
         .path = "/v1/tokens",
         .summary = "The tokens of the account.",
         .handler = list},
        {.name = "auth.tokens.create",
         .http = "POST",
         .path = "/v1/tokens",
         .parameters = {{.name = "label", .summary = "what the token is for"},
                        {.name = "expires_in_days",
                         .type = Type::Whole,
                         .required = false,
                         .summary = "how long it lasts; without: until it is revoked"}},
         .summary = "Makes a token and tells its secret, this once.",
         .handler = create},
        {.name = "auth.tokens.revoke",
         .http = "DELETE",
         .path = "/v1/tokens/{token_id}",
         .parameters = {{.name = "token_id", .summary = "the token's id, as auth.tokens.list tells it"}},
         .summary = "Ends a token. Whatever uses it stops working.",
         .handler = revoke},
        {.name = "auth.enroll_code",
         .http = "POST",
         .path = "/v1/enrolment-codes",
         .parameters = {{.name = "label", .summary = "what will sign in with it: desktop"}},
         .summary = "Makes a code with which another computer signs in, once and within 24 hours.",
         .handler = enrolCode},
    };
}

} // namespace quillfen::localagent
