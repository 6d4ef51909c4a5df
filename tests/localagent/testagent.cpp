// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include "localagent/world/worldfile.h"

#include <gtest/gtest.h>

namespace quillfen::localagent::test {

namespace {

using namespace std::chrono_literals;

// 20 November 2026, 12:00 UTC.
constexpr Time start2026{std::chrono::sys_days{std::chrono::year(2026) / 11 / 20} + 12h};

} // namespace

TestAgent::TestAgent(std::string_view worldText, Faults faults)
    : world{.state = {}, .clock = Clock(m_time.timers, 1, start2026), .home = Home(m_home.path()), .random = {}},
      agent(world, *this, m_time.timers, std::move(faults))
{
    world.state.agentVersion = "1.0.1";
    loadWorld(world, worldText.starts_with('{') ? std::string(worldText) : readWorld(std::string(worldText)));
    agent.subscribe(1);
}

json::value TestAgent::result(std::string_view method, json::object params)
{
    const auto got = answer(start(method, std::move(params)));
    if (!got || !got->contains("result")) {
        ADD_FAILURE() << method << ": " << (got ? json::serialize(*got) : "no answer yet");
        return {};
    }
    return got->at("result");
}

json::object TestAgent::error(std::string_view method, json::object params)
{
    const auto got = answer(start(method, std::move(params)));
    if (!got || !got->contains("error")) {
        ADD_FAILURE() << method << ": " << (got ? json::serialize(*got) : "no answer yet");
        return {{"code", 0}, {"message", ""}};
    }
    return got->at("error").as_object();
}

std::string TestAgent::refusal(std::string_view method, json::object params)
{
    return text(error(method, std::move(params)).at("message"));
}

std::int64_t TestAgent::start(std::string_view method, json::object params)
{
    const std::int64_t id = ++m_lastId;
    json::object request{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}};
    if (!params.empty()) {
        request["params"] = std::move(params);
    }
    agent.line(1, json::serialize(request));
    return id;
}

std::optional<json::object> TestAgent::answer(std::int64_t id) const
{
    const auto found = m_answers.find(id);
    return found == m_answers.end() ? std::nullopt : std::optional(found->second);
}

json::value TestAgent::finish(std::string_view method, json::object params)
{
    const std::int64_t id = start(method, std::move(params));
    for (int turn = 0; turn < 600 && !answer(id); ++turn) {
        pass(0.5);
    }
    const auto got = answer(id);
    if (!got || !got->contains("result")) {
        ADD_FAILURE() << method << ": " << (got ? json::serialize(*got) : "never answered");
        return {};
    }
    return got->at("result");
}

std::string TestAgent::eventNames()
{
    std::string names;
    for (; m_seen < events.size(); ++m_seen) {
        names += (names.empty() ? "" : " ") + events[m_seen].name;
    }
    return names;
}

json::value TestAgent::lastEvent(std::string_view name) const
{
    for (auto event = events.rbegin(); event != events.rend(); ++event) {
        if (event->name == name) {
            return event->data;
        }
    }
    ADD_FAILURE() << "no event " << name;
    return {};
}

VolumeId TestAgent::idOf(std::string_view name) const
{
    for (const auto &[id, volume] : world.state.volumes) {
        if (volume.name == name) {
            return id;
        }
    }
    ADD_FAILURE() << "no volume " << name;
    return 0;
}

void TestAgent::send(ClientId client, std::string line)
{
    if (client != 1) {
        return;
    }
    lines.push_back(line);
    json::error_code error;
    const json::value value = json::parse(line, error);
    if (error || !value.is_object()) {
        return;
    }
    const json::object &object = value.get_object();
    if (object.contains("event")) {
        events.push_back({text(object.at("event")), object.at("result")});
    } else if (object.contains("id") && object.at("id").is_int64()) {
        m_answers[object.at("id").get_int64()] = object;
    }
}

} // namespace quillfen::localagent::test
