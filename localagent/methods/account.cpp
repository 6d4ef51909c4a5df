// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/subjects.h"
#include "localagent/world/records.h"
#include "localagent/world/signin.h"

namespace quillfen::localagent {

namespace {

json::value status(const Call &call)
{
    return authRecord(call.world);
}

json::value account(const Call &call)
{
    return accountRecord(call.world);
}

json::value signIn(const Call &call)
{
    enroll(call.world, call.params.text("code"), call.params.optionalText("api").value_or(""));
    return authRecord(call.world);
}

json::value leave(const Call &call)
{
    signOut(call.world);
    return authRecord(call.world);
}

} // namespace

std::vector<Method> accountMethods()
{
    return {
        {.name = "auth.status",
         .access = Access::Anyone,
         .local = true,
         .summary = "Who is signed in on this computer.",
         .handler = status},
        {.name = "auth.enroll",
         .parameters = {{.name = "code", .summary = "an enrolment code (quill-…) or a quillfen: link"},
                        {.name = "api", .required = false, .summary = "control plane URL of a self-hosted manager"}},
         .access = Access::Anyone,
         .local = true,
         .summary = "Signs this computer in. A code works once.",
         .handler = signIn},
        {.name = "auth.signout",
         .access = Access::Anyone,
         .local = true,
         .summary = "Signs this computer out.",
         .handler = leave},
        {.name = "account",
         .http = "GET",
         .path = "/v1/account",
         .summary = "The account and its plan.",
         .handler = account},
    };
}

} // namespace quillfen::localagent
