// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpctest.h"

namespace quillfen::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Reconnecting : testing::Test {
    FakeAgent agent;
    Log log;
    RPC rpc;

    void SetUp() override
    {
        agent.answer("m", 1);
        rpc.onDown = [this](const QString &message) {
            rpc.mainQueue().post([this, text = message.toStdString()] { log.add(text); });
        };
        rpc.connect(agent.path());
    }
    json::value ask() { return await(rpc.call("m", {}, 20s)); }
};

TEST_F(Reconnecting, IdsGrowOnAndAreNeverUsedAgain)
{
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(ask(), 1);
        agent.stop();
        ASSERT_TRUE(eventually([&] { return log.size() == static_cast<std::size_t>(round) + 1; }));
        agent.restart();
        rpc.connect(agent.path());
    }
    std::vector<std::int64_t> ids;
    for (const FakeAgent::Request &request : agent.requests()) {
        ids.push_back(request.id);
    }
    EXPECT_THAT(ids, ElementsAre(1, 2, 3));
}

TEST_F(Reconnecting, EachLossIsToldOnce)
{
    for (std::size_t round = 1; round <= 3; ++round) {
        agent.hangUp();
        ASSERT_TRUE(eventually([&] { return log.size() == round; }));
        rpc.connect(agent.path());
        EXPECT_EQ(ask(), 1);
    }
    EXPECT_THAT(log.entries(), testing::Each("the agent connection closed"));
    EXPECT_THAT(log.entries(), testing::SizeIs(3));
}

TEST_F(Reconnecting, BetweenTwoConnectionsCallsFailSoon)
{
    agent.stop();
    ASSERT_TRUE(eventually([&] { return log.size() == 1; }));
    EXPECT_EQ(failureOf(rpc.call("m", {}, 3'600s)).code, RPCError::connectionClosed);
    EXPECT_THROW(rpc.connect(agent.path()), RPCError);
    EXPECT_EQ(failureOf(rpc.call("m", {}, 3'600s)).code, RPCError::connectionClosed);
    agent.restart();
    rpc.connect(agent.path());
    EXPECT_EQ(ask(), 1);
}

TEST_F(Reconnecting, AConnectionStillOpenIsGivenUpWithItsCallsButWithoutAWord)
{
    agent.silent("never");
    Log outcomes;
    note(rpc, "never", outcomes);
    ASSERT_TRUE(agent.waitFor("never"));
    rpc.connect(agent.path());
    EXPECT_TRUE(agent.waitForClients(1));
    EXPECT_EQ(ask(), 1);
    EXPECT_THAT(outcomes.entries(), ElementsAre("never: the agent connection closed"));
    EXPECT_THAT(log.entries(), IsEmpty());
}

TEST_F(Reconnecting, ALateAnswerOfTheOldConnectionReachesNoCallOfTheNewOne)
{
    agent.hold("m");
    QCoro::Task<json::value> old = rpc.call("m", {}, 20s);
    ASSERT_TRUE(agent.waitFor("m"));
    rpc.connect(agent.path());
    agent.release("m");
    EXPECT_EQ(failureOf(std::move(old)).code, RPCError::connectionClosed);
    EXPECT_EQ(ask(), 1);
}

TEST_F(Reconnecting, AThousandTimesLeavesNoDescriptorAndNoThread)
{
#ifndef Q_OS_LINUX
    GTEST_SKIP() << "counts in /proc";
#endif
    ask();
    const std::size_t descriptors = entriesOf("/proc/self/fd");
    const std::size_t threads = entriesOf("/proc/self/task");
    for (std::size_t round = 1; round <= 1'000; ++round) {
        agent.stop();
        ASSERT_TRUE(eventually([&] { return log.size() == round; }));
        agent.restart();
        rpc.connect(agent.path());
    }
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(entriesOf("/proc/self/fd"), descriptors);
    EXPECT_EQ(entriesOf("/proc/self/task"), threads);
}

TEST_F(Reconnecting, AfterALossTheDescriptorAndTheThreadGoByThemselves)
{
#ifndef Q_OS_LINUX
    GTEST_SKIP() << "counts in /proc";
#endif
    ask();
    const std::size_t descriptors = entriesOf("/proc/self/fd");
    const std::size_t threads = entriesOf("/proc/self/task");
    agent.stop(); // closes its listener and its end as well
    ASSERT_TRUE(eventually([&] { return log.size() == 1; }));
    EXPECT_TRUE(eventually([&] { return entriesOf("/proc/self/task") == threads - 1; }));
    EXPECT_TRUE(eventually([&] { return entriesOf("/proc/self/fd") == descriptors - 3; }));
}

} // namespace

} // namespace quillfen::test
