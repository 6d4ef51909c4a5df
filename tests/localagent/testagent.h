// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "folder.h"
#include "manualtime.h"

#include "localagent/methods/agent.h"
#include "localagent/world/world.h"

#include <boost/json.hpp>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillfen::localagent::test {

/// A world with its methods, without a socket and with time in the test's hand. Client 1 asks and hears the events.
class TestAgent final : public Clients {
public:
    struct Event {
        std::string name;
        json::value data;
    };

    /// `world` names a built-in world, or is the JSON text of one.
    explicit TestAgent(std::string_view world = "everyday", Faults faults = {});

    /// Calls a method that answers at once with a result.
    json::value result(std::string_view method, json::object params = {});
    /// Calls a method that refuses at once: the whole error object.
    json::object error(std::string_view method, json::object params = {});
    /// … its message.
    std::string refusal(std::string_view method, json::object params = {});
    /// Starts a call; its answer is there when `answer` says so.
    std::int64_t start(std::string_view method, json::object params = {});
    [[nodiscard]] std::optional<json::object> answer(std::int64_t id) const;
    /// Starts a call, lets time pass until it is answered with a result.
    json::value finish(std::string_view method, json::object params = {});

    void pass(double seconds) { m_time.pass(Timers::Seconds(seconds)); }
    /// The names of the events since the last look, joined by spaces.
    std::string eventNames();
    /// The data of the last event of that name.
    [[nodiscard]] json::value lastEvent(std::string_view name) const;
    /// The id of the volume with this name.
    [[nodiscard]] VolumeId idOf(std::string_view name) const;

    void send(ClientId client, std::string line) override;
    void drop(ClientId client) override { dropped.push_back(client); }
    void stopReading(ClientId client) override { stopped.push_back(client); }

    std::vector<std::string> lines; ///< as sent to client 1
    std::vector<ClientId> dropped;
    std::vector<ClientId> stopped;
    std::vector<Event> events;

private:
    Folder m_home;
    ManualTime m_time;

public:
    World world;
    Agent agent;

private:
    std::int64_t m_lastId = 0;
    std::size_t m_seen = 0;
    std::map<std::int64_t, json::object> m_answers;
};

/// A text of a JSON value, for comparing.
[[nodiscard]] inline std::string text(const json::value &value)
{
    return std::string(value.as_string());
}

} // namespace quillfen::localagent::test
