// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/methods/faults.h"
#include "localagent/methods/request.h"
#include "localagent/methods/table.h"
#include "localagent/wire/clients.h"
#include "localagent/wire/timers.h"
#include "localagent/world/world.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace quillfen::localagent {

/// Takes lines from the wire, has the table's handlers work on the world, and sends answers and events back. Nothing a
/// client sends makes it throw.
class Agent final {
public:
    /// World, clients and timers must outlive the agent's last timer.
    Agent(World &world, Clients &clients, Timers &timers, Faults faults);

    // What the wire reports.
    void opened(ClientId client);
    void line(ClientId client, std::string_view line);
    void tooLong(ClientId client);
    void closed(ClientId client);
    /// Whether a request of this client has yet to be answered.
    [[nodiscard]] bool owes(ClientId client) const { return m_owed.contains(client); }

    /// From now on the client gets the events.
    void subscribe(ClientId client);

    [[nodiscard]] const Table &table() const { return m_table; }
    [[nodiscard]] Faults &faults() { return m_faults; }
    /// Has the faults that belong to connections (drop_after, stop_reading) count from now for `client`.
    void spoil(ClientId client);

private:
    void perform(ClientId client, const Request &request);
    void work(ClientId client, const Request &request, const Method &method);
    void answer(ClientId client, const Request &request, Result result);
    void refuse(ClientId client, const Request &request, const Error &error);
    void settle(ClientId client);
    void reply(ClientId client, std::string line);
    void broadcast(std::string_view event, json::value data);

    World &m_world;
    Clients &m_clients;
    Timers &m_timers;
    Faults m_faults;
    Table m_table;
    std::unordered_set<ClientId> m_subscribers;
    std::unordered_map<ClientId, std::size_t> m_owed; ///< answers, of the clients that wait for any
    std::size_t m_garbageSent = 0;
};

} // namespace quillfen::localagent
