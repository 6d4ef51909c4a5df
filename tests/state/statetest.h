// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"
#include "support/await.h"
#include "support/fakeagent.h"

#include <QCoroTask>
#include <QTest>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace quillfen::test {

using namespace std::chrono_literals;

/// The intervals of the tests: long enough to tell apart, the ticker out of the way.
inline Timing quickTiming()
{
    return {.retryDelay = 100ms, .refreshInterval = 1h, .toastDuration = 150ms, .mountRetryDelay = 20ms, .frame = 1ms};
}

inline json::value parsed(std::string_view text)
{
    return json::parse(json::string_view(text.data(), text.size()));
}

/// A state and the agent it meets, with an answer for everything a refresh asks for: two volumes, the engine running.
class StateTest : public testing::Test {
protected:
    explicit StateTest(const Timing &timing = quickTiming()) : state(AppState::create(timing))
    {
        qputenv("QUILL_AGENT_SOCKET", agent.path().c_str());
        agent.answer("agent.version", parsed(R"({"version":"2.1"})"));
        agent.answer("auth.status", parsed(R"({"signed_in":true})"));
        agent.answer("vm.status", parsed(R"({"status":"Running"})"));
        agent.answer("mount.state", parsed(R"([{"name":"photos","mountpoint":"/home/u/Quillfen/photos"}])"));
        agent.answer("volumes.list", parsed(R"([{"id":1,"name":"photos"},{"id":2,"name":"music"}])"));
        agent.answer("account", parsed(R"({"plan":"pro"})"));
        agent.answer("volumes.status", parsed(R"({"appliance":{"online":true}})"));
        agent.answer("recoveries.list_for_volume", parsed(R"({"recoveries":[]})"));
        agent.answer("appliance.orphans", parsed(R"([{"container":"lost"}])"));
        agent.answer("appliance.list", parsed(R"([{"container":"q-photos","status":"Up 3 hours"}])"));
        agent.answer("events.subscribe", nullptr);
    }

    ~StateTest() override
    {
        if (state != nullptr) {
            state->shutDown();
        }
        qunsetenv("QUILL_AGENT_SOCKET");
    }

    /// Connects, and waits until the first refresh and the subscription are through.
    void connectAndSettle()
    {
        const std::size_t before = agent.count("events.subscribe");
        state->connect();
        ASSERT_TRUE(eventually([&] { return agent.count("events.subscribe") > before; }));
        settle();
        agent.clearLog();
    }

    /// One call to the agent and back: whatever it sent before has arrived by then.
    void settle()
    {
        agent.answer("test.settle", nullptr);
        const json::object none;
        await(state->rpc().call("test.settle", none, 10s));
    }

    FakeAgent agent;
    std::shared_ptr<AppState> state;
};

} // namespace quillfen::test
