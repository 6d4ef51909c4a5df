// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/agent.h"
#include "localagent/methods/subjects.h"

namespace quillfen::localagent {

namespace {

json::value version(const Call &call)
{
    return json::object{{"version", call.world.state.agentVersion}};
}

json::value listMethods(const Call &call)
{
    return call.agent.table().records();
}

json::value subscribe(const Call &call)
{
    call.agent.subscribe(call.client);
    return json::object{{"subscribed", true}};
}

// The switches of the command line at run time. Those about connections concern the one that asks.
json::value fault(const Call &call)
{
    const Params &params = call.params;
    const std::string kind = params.text("kind");
    const std::chrono::duration<double> seconds(params.optionalNumber("seconds").value_or(0));
    Faults &faults = call.agent.faults();
    if (kind == "clear") {
        faults = {};
    } else if (kind == "garbage") {
        faults.garbage = true;
    } else if (kind == "drop_after" || kind == "stop_reading") {
        Faults former = std::exchange(faults, {});
        (kind == "drop_after" ? faults.dropAfter : faults.stopReading) = seconds;
        call.agent.spoil(call.client);
        faults = std::move(former);
    } else {
        MethodFault &method = faults.methods[params.optionalText("method").value_or("*")];
        method.silent = method.silent || kind == "silent";
        method.drop = method.drop || kind == "drop";
        if (kind == "delay") {
            method.delay = seconds;
        }
        if (kind == "fail") {
            method.failure =
                Error{params.optionalWhole("code").value_or(code::internal),
                      params.optionalText("message").value_or("failed on request"), params.optionalWhole("status")};
        }
    }
    return json::object{{"set", kind}};
}

std::vector<Parameter> faultParameters()
{
    return {
        {.name = "kind",
         .summary = "what goes wrong",
         .oneOf = {"delay", "fail", "drop", "silent", "garbage", "drop_after", "stop_reading", "clear"}},
        {.name = "method",
         .required = false,
         .summary = "for delay, fail, drop and silent; every method when left out"},
        {.name = "seconds", .type = Type::Number, .required = false, .summary = "for delay, drop_after, stop_reading"},
        {.name = "code", .type = Type::Whole, .required = false, .summary = "for fail"},
        {.name = "status", .type = Type::Whole, .required = false, .summary = "for fail"},
        {.name = "message", .required = false, .summary = "for fail"},
    };
}

} // namespace

std::vector<Method> serviceMethods()
{
    return {
        {.name = "agent.version",
         .access = Access::Anyone,
         .local = true,
         .summary = "The version of the agent.",
         .handler = version},
        {.name = "methods.list",
         .access = Access::Anyone,
         .local = true,
         .summary = "Every method with its parameters.",
         .handler = listMethods},
        {.name = "events.subscribe",
         .access = Access::Anyone,
         .local = true,
         .summary = "Has this connection receive events.",
         .handler = subscribe},
        {.name = "localagent.fault",
         .parameters = faultParameters(),
         .access = Access::Anyone,
         .local = true,
         .summary = "Makes the agent misbehave, for tests and demonstrations.",
         .handler = fault},
    };
}

} // namespace quillfen::localagent
