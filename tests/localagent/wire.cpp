// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "agentprocess.h"

#include "localagent/wire/server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

using namespace quillfen::localagent::test;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string next(Peer &peer)
{
    return peer.line().value_or("no line");
}

} // namespace

TEST(Wire, AnswersComeBackByIdWhateverTheId)
{
    AgentProcess agent;
    Peer peer(agent.socket());
    peer.write("{\"jsonrpc\":\"2.0\",\"id\":\"a\",\"method\":\"agent.version\"}\n");
    EXPECT_THAT(next(peer), HasSubstr("\"id\":\"a\""));
    peer.request(9223372036854775807LL, "agent.version");
    EXPECT_THAT(next(peer), HasSubstr("\"id\":9223372036854775807,\"result\""));
}

TEST(Wire, RequestsAreCutFromTheStreamHoweverTheyArrive)
{
    AgentProcess agent;
    Peer peer(agent.socket());
    const std::string line = "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"agent.version\"}\n";
    for (const char letter : line) {
        peer.write({&letter, 1});
    }
    EXPECT_THAT(next(peer), HasSubstr("\"id\":1"));
    peer.write(line + line + line.substr(0, 10));
    EXPECT_THAT(next(peer), HasSubstr("result"));
    EXPECT_THAT(next(peer), HasSubstr("result"));
    EXPECT_FALSE(peer.line(100ms));
    peer.write(line.substr(10));
    EXPECT_THAT(next(peer), HasSubstr("result"));
}

TEST(Wire, BadLinesGetAnErrorAndHarmNobody)
{
    AgentProcess agent;
    Peer peer(agent.socket());
    const std::string parseError = "{\"jsonrpc\":\"2.0\",\"id\":null,\"error\":{\"code\":-32700,";
    for (const std::string &line : {std::string("hello"), std::string(), std::string("{\"id\":"),
                                    std::string("\xff\xfe\x80"), std::string(1000000, '['), std::string("\0\0\0", 3)}) {
        ASSERT_TRUE(peer.write(line + "\n"));
        EXPECT_THAT(next(peer), HasSubstr(parseError));
    }
    peer.write("[]\n");
    EXPECT_THAT(next(peer), HasSubstr("\"code\":-32600"));
    EXPECT_THAT(json::serialize(peer.call("agent.version")), HasSubstr("result"));
}

TEST(Wire, AHugeLineIsSkippedWithAWord)
{
    AgentProcess agent;
    Peer peer(agent.socket());
    ASSERT_TRUE(peer.write(std::string(20U << 20U, 'x') + "\n"));
    EXPECT_THAT(next(peer), HasSubstr("the line is longer than 16 MB and was skipped"));
    EXPECT_THAT(json::serialize(peer.call("agent.version")), HasSubstr("result"));
}

TEST(Wire, HalfALineAtTheEndOfAConnectionIsForgotten)
{
    AgentProcess agent;
    {
        Peer peer(agent.socket());
        peer.write("{\"jsonrpc\":\"2.0\",\"id\":1,\"meth");
    }
    Peer peer(agent.socket());
    EXPECT_THAT(json::serialize(peer.call("agent.version")), HasSubstr("result"));
}

TEST(Wire, AClientThatWritesNoMoreStillGetsEveryAnswer)
{
    AgentProcess agent({"--world", "large"});
    for (const int lists : {1, 10}) { // of about two megabytes each: more than the socket takes, and than is queued
        Peer peer(agent.socket());
        for (int id = 1; id <= lists; ++id) {
            peer.request(id, "volumes.list");
        }
        peer.finishWriting();
        std::this_thread::sleep_for(100ms); // the agent sees the end while it still has most of the answer
        for (int id = 1; id <= lists; ++id) {
            const std::string begin = "{\"jsonrpc\":\"2.0\",\"id\":" + std::to_string(id) + ",\"result\"";
            ASSERT_EQ(next(peer).substr(0, begin.size()), begin);
        }
        EXPECT_TRUE(peer.ends()) << "nothing is owed any more";
    }
}

TEST(Wire, AClientThatWritesNoMoreIsKeptForAnAnswerStillBeingWorkedOn)
{
    AgentProcess agent({"--speed", "20"});
    Peer peer(agent.socket());
    peer.request(1, "volumes.resize", {{"volume_id", 3121}, {"size_bytes", 120LL << 30U}});
    peer.finishWriting();
    EXPECT_THAT(next(peer), HasSubstr("\"id\":1,\"result\""));
    EXPECT_TRUE(peer.ends());
}

TEST(Wire, AClientThatWritesNoMoreAndIsOwedNothingIsLetGo)
{
    AgentProcess agent({"--silent", "agent.version"});
    Peer idle(agent.socket());
    idle.finishWriting();
    EXPECT_TRUE(idle.ends());
    Peer unanswered(agent.socket());
    unanswered.request(1, "agent.version");
    unanswered.finishWriting();
    EXPECT_TRUE(unanswered.ends());
}

TEST(Wire, TwoClientsHaveTheirOwnAnswersAndShareTheEvents)
{
    AgentProcess agent;
    Peer one(agent.socket());
    Peer two(agent.socket());
    Peer deaf(agent.socket());
    one.call("events.subscribe");
    two.call("events.subscribe");
    deaf.call("agent.version");
    one.request(5, "mount.detach", {{"volume_id", 3121}});
    EXPECT_THAT(next(one), HasSubstr("{\"event\":\"mount.changed\",\"result\":["));
    EXPECT_THAT(next(one), HasSubstr("\"id\":5"));
    EXPECT_THAT(next(two), HasSubstr("{\"event\":\"mount.changed\",\"result\":["));
    EXPECT_FALSE(two.line(100ms));
    EXPECT_FALSE(deaf.line(10ms));
}

TEST(Wire, WorkGoesOnWhenItsAskerHasGone)
{
    AgentProcess agent({"--speed", "20"});
    {
        Peer peer(agent.socket());
        peer.request(1, "volumes.resize", {{"volume_id", 3121}, {"size_bytes", 120LL << 30U}});
    }
    Peer peer(agent.socket());
    std::string list;
    for (int turn = 0; turn < 100 && list.find("128849018880") == std::string::npos; ++turn) {
        peer.line(20ms);
        list = json::serialize(peer.call("volumes.list"));
    }
    EXPECT_THAT(list, HasSubstr("128849018880"));
    EXPECT_THAT(json::serialize(peer.call("mount.state")), HasSubstr("Documents"));
}

// A client that asks for far more than it reads is not answered into memory without end: what it asked last is not
// worked on before it has read what it asked first. In the end it gets everything.
TEST(Wire, AClientThatDoesNotReadIsWaitedFor)
{
    AgentProcess agent({"--world", "large"});
    Peer quick(agent.socket());
    quick.call("events.subscribe");
    Peer slow(agent.socket());
    constexpr int lists = 40; // of about two megabytes each
    for (int id = 1; id <= lists; ++id) {
        slow.request(id, "volumes.list");
    }
    slow.request(lists + 1, "auth.signout");
    EXPECT_FALSE(quick.line(300ms)) << "nobody is signed out yet";
    for (int id = 1; id <= lists; ++id) {
        const std::string line = next(slow);
        ASSERT_GT(line.size(), 1000000U);
        ASSERT_EQ(line.find("{\"jsonrpc\":\"2.0\",\"id\":" + std::to_string(id) + ",\"result\""), 0U);
    }
    EXPECT_THAT(next(slow), HasSubstr("signed_in"));
    EXPECT_THAT(next(quick), HasSubstr("\"event\":\"mount.changed\""));
}

// Its further requests stay in the sockets, where its own writing comes to a halt, instead of piling up in the agent.
TEST(Wire, AClientThatDoesNotReadCannotFillTheAgentWithRequests)
{
    AgentProcess agent({"--world", "large"});
    Peer peer(agent.socket());
    for (int id = 1; id <= 10; ++id) {
        peer.request(id, "volumes.list");
    }
    std::string requests;
    while (requests.size() < (16U << 20U)) {
        requests += "{\"jsonrpc\":\"2.0\",\"id\":11,\"method\":\"agent.version\"}\n";
    }
    EXPECT_FALSE(peer.write(requests, 500ms));
}

TEST(Wire, AThousandConnectionsLeaveNothingBehind)
{
    AgentProcess agent;
    for (int turn = 0; turn < 1000; ++turn) {
        Peer peer(agent.socket());
        ASSERT_TRUE(peer.connected());
        if (turn % 3 == 0) {
            peer.request(1, "volumes.list");
        }
    }
    Peer peer(agent.socket());
    EXPECT_THAT(json::serialize(peer.call("agent.version")), HasSubstr("result"));
}

TEST(Wire, TenThousandStatusesInARowAreQuick)
{
    AgentProcess agent({"--world", "large"});
    Peer peer(agent.socket());
    std::string requests;
    for (int number = 1; number <= 10000; ++number) {
        requests += "{\"jsonrpc\":\"2.0\",\"id\":" + std::to_string(number) +
                    ",\"method\":\"volumes.status\",\"params\":{\"volume_id\":" + std::to_string(3100 + number) +
                    "}}\n";
    }
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(peer.write(requests));
    std::string line;
    for (int number = 1; number <= 10000; ++number) {
        line = next(peer);
    }
    EXPECT_THAT(line, HasSubstr("\"id\":10000,\"result\""));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
}
