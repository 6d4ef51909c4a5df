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

json::value close(const Call &call)
{
    closeAccount(call.world);
    return accountRecord(call.world);
}

json::value reclaim(const Call &call)
{
    reclaimAccount(call.world);
    return accountRecord(call.world);
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
        {.name = "account.close",
         .http = "POST",
         .path = "/v1/account/close",
         .summary = "Schedules every volume for destruction after the grace period.",
         .handler = close},
        {.name = "account.reclaim",
         .http = "POST",
         .path = "/v1/account/reclaim",
         .summary = "Takes the closing of the account back.",
         .handler = reclaim},
    };
}

} // namespace quillfen::localagent
