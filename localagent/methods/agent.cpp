// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/agent.h"

#include "localagent/wire/server.h"

namespace quillfen::localagent {

namespace {

Error errorOf(const Refusal &refusal)
{
    return {code::refused, refusal.what(), static_cast<std::int64_t>(refusal.kind)};
}

void requireAccess(const Account &account, const Method &method)
{
    if (method.access != Access::Anyone && !account.signedIn) {
        throw Refusal(Refusal::Kind::SignedOut, "This computer is not signed in.");
    }
    if (method.access == Access::Operator && !account.admin) {
        throw Refusal(Refusal::Kind::Forbidden, std::string(method.name) + " is for operators only.");
    }
}

} // namespace

Agent::Agent(World &world, Clients &clients, Timers &timers, Faults faults)
    : m_world(world), m_clients(clients), m_timers(timers), m_faults(std::move(faults))
{
    m_world.announce = [this](std::string_view event, json::value data) { broadcast(event, std::move(data)); };
}

void Agent::opened(ClientId client)
{
    spoil(client);
}

void Agent::spoil(ClientId client)
{
    if (m_faults.dropAfter) {
        m_timers.after(*m_faults.dropAfter, [this, client] { m_clients.drop(client); });
    }
    if (m_faults.stopReading) {
        m_timers.after(*m_faults.stopReading, [this, client] { m_clients.stopReading(client); });
    }
}

void Agent::line(ClientId client, std::string_view line)
{
    auto parsed = parseRequest(line);
    if (const BadRequest *bad = std::get_if<BadRequest>(&parsed)) {
        reply(client, errorLine(bad->id, bad->error));
        return;
    }
    Request &request = std::get<Request>(parsed);
    if (request.wantsAnswer) {
        ++m_owed[client];
    }
    const MethodFault *fault = m_faults.of(request.method);
    if (fault && fault->delay.count() > 0) {
        m_timers.after(fault->delay, [this, client, late = std::move(request)] { perform(client, late); });
    } else {
        perform(client, request);
    }
}

void Agent::tooLong(ClientId client)
{
    const std::string limit = std::to_string(Server::longestLine >> 20U);
    reply(client, errorLine(nullptr, {code::invalidRequest,
                                      "Invalid request: the line is longer than " + limit + " MB and was skipped",
                                      std::nullopt}));
}

void Agent::closed(ClientId client)
{
    m_subscribers.erase(client);
    m_owed.erase(client);
}

void Agent::subscribe(ClientId client)
{
    m_subscribers.insert(client);
}

void Agent::perform(ClientId client, const Request &request)
{
    const MethodFault *fault = m_faults.of(request.method);
    if (fault && fault->drop) {
        m_clients.drop(client);
        return;
    }
    if (fault && fault->silent) {
        if (request.wantsAnswer) {
            settle(client);
        }
        return;
    }
    if (fault && fault->failure) {
        refuse(client, request, *fault->failure);
        return;
    }
    if (const Method *method = m_table.find(request.method)) {
        work(client, request, *method);
    } else {
        refuse(client, request, {code::unknownMethod, "Unknown method: " + request.method, std::nullopt});
    }
}

void Agent::work(ClientId client, const Request &request, const Method &method)
{
    try {
        requireAccess(m_world.state.account, method);
        const Params params(method.name, method.parameters, request.params);
        const Call call{m_world, *this, client, params};
        if (const auto *now = std::get_if<0>(&method.handler)) {
            answer(client, request, (*now)(call));
            return;
        }
        if (const auto *text = std::get_if<2>(&method.handler)) {
            const std::string result = (*text)(call);
            if (request.wantsAnswer) {
                settle(client);
                reply(client, answerLineOfText(request.id, result));
            }
            return;
        }
        // The work goes on when the client has gone; its answer then finds nobody.
        const Done done = [this, client, id = request.id, wanted = request.wantsAnswer](Result result) {
            answer(client, {id, wanted, {}, {}}, std::move(result));
        };
        std::get<1>(method.handler)(call, done);
    } catch (const ParamsError &error) {
        refuse(client, request, {code::badParams, error.what(), std::nullopt});
    } catch (const Refusal &refusal) {
        refuse(client, request, errorOf(refusal));
    } catch (const std::exception &error) {
        refuse(client, request, {code::internal, request.method + " failed: " + error.what(), std::nullopt});
    }
}

void Agent::answer(ClientId client, const Request &request, Result result)
{
    if (const Refusal *refusal = std::get_if<Refusal>(&result)) {
        refuse(client, request, errorOf(*refusal));
    } else if (request.wantsAnswer) {
        settle(client);
        reply(client, answerLine(request.id, std::move(std::get<json::value>(result))));
    }
}

void Agent::refuse(ClientId client, const Request &request, const Error &error)
{
    if (request.wantsAnswer) {
        settle(client);
        reply(client, errorLine(request.id, error));
    }
}

void Agent::settle(ClientId client)
{
    const auto found = m_owed.find(client);
    if (found != m_owed.end() && --found->second == 0) {
        m_owed.erase(found);
    }
}

void Agent::reply(ClientId client, std::string line)
{
    if (m_faults.garbage) {
        m_clients.send(client, std::string(garbageLine(m_garbageSent++)));
    }
    m_clients.send(client, std::move(line));
}

void Agent::broadcast(std::string_view event, json::value data)
{
    if (m_subscribers.empty()) {
        return;
    }
    const std::string line = eventLine(event, std::move(data));
    for (const ClientId client : m_subscribers) {
        m_clients.send(client, line);
    }
}

} // namespace quillfen::localagent
