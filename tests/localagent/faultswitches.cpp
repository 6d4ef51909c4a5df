// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "agentprocess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace quillfen::localagent::test;
using namespace std::chrono_literals;
using testing::HasSubstr;

namespace {

std::string asked(Peer &peer, std::string_view method)
{
    return json::serialize(peer.call(method));
}

} // namespace

TEST(FaultSwitches, DelayHoldsOneMethodBack)
{
    AgentProcess agent({"--delay", "vm.status=0.3", "--speed", "1000"});
    Peer peer(agent.socket());
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(asked(peer, "vm.status"), HasSubstr("Running"));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 300ms); // real seconds, whatever the speed
}

TEST(FaultSwitches, FailAnswersWithTheErrorOnceAndAgain)
{
    AgentProcess agent(
        {"--fail=account=-32011:503:The vault is being moved: back at noon", "--fail", "vm.status=-5:no"});
    Peer peer(agent.socket());
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_THAT(
            asked(peer, "account"),
            HasSubstr(R"("error":{"code":-32011,"message":"The vault is being moved: back at noon","status":503})"));
    }
    EXPECT_THAT(asked(peer, "vm.status"), HasSubstr(R"("error":{"code":-5,"message":"no"})"));
}

TEST(FaultSwitches, DropEndsTheConnectionOfTheCallAlone)
{
    AgentProcess agent({"--drop", "vm.status"});
    Peer other(agent.socket());
    Peer peer(agent.socket());
    EXPECT_THAT(asked(other, "agent.version"), HasSubstr("result"));
    peer.request(1, "vm.status");
    EXPECT_TRUE(peer.ends());
    EXPECT_THAT(asked(other, "agent.version"), HasSubstr("result"));
}

TEST(FaultSwitches, DropAfterEndsEveryConnectionInItsTime)
{
    AgentProcess agent({"--drop-after", "0.3"});
    Peer peer(agent.socket());
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(asked(peer, "agent.version"), HasSubstr("result"));
    EXPECT_TRUE(peer.ends());
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 250ms);
    Peer again(agent.socket());
    EXPECT_THAT(asked(again, "agent.version"), HasSubstr("result"));
}

TEST(FaultSwitches, StopReadingKeepsTheConnectionButTakesNothing)
{
    AgentProcess agent({"--stop-reading", "0.2"});
    Peer peer(agent.socket());
    EXPECT_THAT(asked(peer, "agent.version"), HasSubstr("result"));
    EXPECT_FALSE(peer.ends(400ms));
    peer.request(1, "agent.version");
    EXPECT_FALSE(peer.line(200ms));
    EXPECT_FALSE(peer.write(std::string(8U << 20U, 'x'), 300ms)) << "the socket's buffers are full by then";
}

TEST(FaultSwitches, SilentMethodsAreNeverAnswered)
{
    AgentProcess agent({"--silent", "vm.status"});
    Peer peer(agent.socket());
    peer.request(1, "vm.status");
    EXPECT_FALSE(peer.line(200ms));
    EXPECT_THAT(asked(peer, "agent.version"), HasSubstr("result"));
}

TEST(FaultSwitches, GarbageStandsBetweenGoodAnswers)
{
    AgentProcess agent({"--garbage"});
    Peer peer(agent.socket());
    int good = 0;
    int bad = 0;
    for (int number = 1; number <= 16; ++number) {
        peer.request(number, "agent.version");
    }
    while (good < 16) {
        const auto line = peer.line();
        ASSERT_TRUE(line);
        ++(line->find("\"result\":{\"version\"") != std::string::npos ? good : bad);
    }
    EXPECT_EQ(bad, 16);
}

TEST(FaultSwitches, OneForEveryMethodLeavesThoseWithTheirOwn)
{
    AgentProcess agent({"--fail", "*=-1:all down", "--delay", "agent.version=0"});
    Peer peer(agent.socket());
    EXPECT_THAT(asked(peer, "account"), HasSubstr("all down"));
    EXPECT_THAT(asked(peer, "agent.version"), HasSubstr("result"));
}
