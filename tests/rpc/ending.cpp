// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpctest.h"

#include <thread>

namespace quillfen::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The client can go before the agent does.
struct Ending : testing::Test {
    FakeAgent agent;
    Log log;
    std::unique_ptr<RPC> rpc = std::make_unique<RPC>();

    void SetUp() override
    {
        agent.silent("first");
        agent.silent("second");
        rpc->onDown = [this](const QString &message) {
            rpc->mainQueue().post([this, text = message.toStdString()] { log.add("down: " + text); });
        };
        rpc->connect(agent.path());
    }
    void startTwoCalls()
    {
        note(*rpc, "first", log);
        note(*rpc, "second", log);
        ASSERT_TRUE(agent.waitFor("second"));
    }
};

TEST_F(Ending, ByTheAgentFailsEveryWaitingCallAndThenTellsTheOwner)
{
    startTwoCalls();
    agent.hangUp();
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_THAT(log.entries(), ElementsAre("first: the agent connection closed", "second: the agent connection closed",
                                           "down: the agent connection closed"));
}

TEST_F(Ending, OnDownRunsOnTheReadingThread)
{
    std::atomic<std::thread::id> thread;
    rpc->onDown = [&](const QString &) { thread = std::this_thread::get_id(); };
    rpc->connect(agent.path());
    ASSERT_TRUE(agent.waitForClients(1));
    agent.hangUp();
    ASSERT_TRUE(eventually([&] { return thread.load() != std::thread::id(); }));
    EXPECT_NE(thread.load(), std::this_thread::get_id());
}

TEST_F(Ending, WhatTheAgentSaidBeforeStillArrives)
{
    startTwoCalls();
    agent.sendRaw("{\"id\":2,\"result\":\"goodbye\"}\n");
    agent.hangUp();
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_THAT(log.entries(), ElementsAre("second: \"goodbye\"", "first: the agent connection closed",
                                           "down: the agent connection closed"));
}

TEST_F(Ending, ByTheOwnerLooksTheSame)
{
    startTwoCalls();
    rpc->close();
    EXPECT_THAT(log.entries(), IsEmpty()) << "nobody resumes within close";
    rpc->mainQueue().drain();
    EXPECT_THAT(log.entries(), ElementsAre("first: the agent connection closed", "second: the agent connection closed",
                                           "down: the agent connection closed"));
    EXPECT_TRUE(agent.waitForClients(0));
}

TEST_F(Ending, ClosingWhatIsClosedDoesNothing)
{
    rpc->close();
    rpc->mainQueue().drain();
    rpc->close();
    rpc->mainQueue().drain();
    EXPECT_THAT(log.entries(), ElementsAre("down: the agent connection closed"));
    RPC never;
    never.close();
}

TEST_F(Ending, ACallInTheMomentOfTheHangUpNeverHangs)
{
    for (int round = 0; round < 100; ++round) {
        ASSERT_TRUE(agent.waitForClients(1));
        agent.hangUp();
        EXPECT_EQ(failureOf(rpc->call("first", {}, 3'600s)).code, RPCError::connectionClosed);
        rpc->connect(agent.path());
    }
}

TEST_F(Ending, ByDestructionFailsWhoWaitsAndTellsNobodyElse)
{
    startTwoCalls();
    rpc.reset();
    EXPECT_THAT(log.entries(),
                ElementsAre("first: the agent connection closed", "second: the agent connection closed"));
}

/// Holds a token for as long as its frame lives.
QCoro::Task<> hold(RPC &rpc, std::shared_ptr<int> token)
{
    try {
        const json::object none;
        co_await rpc.call("first", none, 60s);
    } catch (const RPCError &) {
        ++*token;
    }
}

TEST_F(Ending, ByDestructionLeavesNoFrameBehind)
{
    const auto token = std::make_shared<int>(0);
    hold(*rpc, token);
    EXPECT_GT(token.use_count(), 1);
    rpc.reset();
    EXPECT_EQ(token.use_count(), 1);
    EXPECT_EQ(*token, 1);
}

QCoro::Task<> callAgain(RPC &rpc, Log &log)
{
    for (int attempt = 0; attempt < 3; ++attempt) {
        co_await note(rpc, "first", log);
    }
}

TEST_F(Ending, WhoCallsAgainDuringTheDestructionFailsAgain)
{
    callAgain(*rpc, log);
    ASSERT_TRUE(agent.waitFor("first"));
    rpc.reset();
    EXPECT_THAT(log.entries(), testing::SizeIs(3));
    EXPECT_THAT(log.entries(), testing::Each("first: the agent connection closed"));
}

TEST_F(Ending, DestructionWithinATaskOfItsOwnQueueIsSafe)
{
    startTwoCalls();
    bool destroyed = false;
    rpc->mainQueue().post([&] {
        rpc.reset();
        destroyed = true;
    });
    ASSERT_TRUE(eventually([&] { return destroyed; }));
    EXPECT_THAT(log.entries(), testing::SizeIs(2));
}

QCoro::Task<> destroyAfterAnswer(std::unique_ptr<RPC> &rpc)
{
    const json::object none;
    const json::value answer = co_await rpc->call("bye", none, 60s);
    EXPECT_EQ(answer, "bye");
    rpc.reset();
}

TEST_F(Ending, DestructionByACallerThatWasJustResumedIsSafe)
{
    agent.answer("bye", "bye");
    startTwoCalls();
    destroyAfterAnswer(rpc);
    ASSERT_TRUE(eventually([&] { return rpc == nullptr; }));
    EXPECT_EQ(rpc, nullptr);
    EXPECT_THAT(log.entries(), testing::SizeIs(2));
}

TEST_F(Ending, DestructionAmidAFloodOfEventsWaitsForNobody)
{
    std::atomic<std::size_t> posted = 0;
    rpc->onEvent = [&, &queue = rpc->mainQueue()](const auto &, const auto &) {
        queue.post([] {});
        ++posted;
    };
    rpc->connect(agent.path());
    ASSERT_TRUE(agent.waitForClients(1));
    std::string flood;
    for (std::size_t count = 0; count < 4 * MainQueue::capacity; ++count) {
        flood += "{\"event\":\"e\"}\n";
    }
    agent.sendRaw(flood);
    while (posted < MainQueue::capacity / 2) {
        std::this_thread::yield();
    }
    std::this_thread::sleep_for(50ms); // by now the reading thread waits in post, for a main thread that does not come
    rpc.reset();
    EXPECT_LT(posted, 4 * MainQueue::capacity);
}

} // namespace

} // namespace quillfen::test
