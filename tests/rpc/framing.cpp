// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpctest.h"

namespace quillfen::test {

namespace {

using testing::ElementsAre;

/// Lines as they come out of the socket, seen through events.
struct Framing : testing::Test {
    FakeAgent agent;
    Log log;
    RPC rpc;

    void SetUp() override
    {
        rpc.onEvent = [this](const std::string &name, const auto &) { log.add(name); };
        rpc.connect(agent.path());
        ASSERT_TRUE(agent.waitForClients(1));
    }
    /// Everything sent so far has been read once the event `last` is there.
    bool arrived(const std::string &last)
    {
        return eventually([&] {
            const auto entries = log.entries();
            return !entries.empty() && entries.back() == last;
        });
    }
    void sendApart(const std::string &bytes)
    {
        agent.sendRaw(bytes);
        QTest::qWait(20); // long enough for the reading thread to have read it alone
    }
};

TEST_F(Framing, TwoMessagesInOnePieceAreTwoMessagesInOrder)
{
    agent.sendRaw("{\"event\":\"a\"}\n{\"event\":\"b\"}\n");
    ASSERT_TRUE(arrived("b"));
    EXPECT_THAT(log.entries(), ElementsAre("a", "b"));
}

TEST_F(Framing, AMessageInThreePiecesIsOneMessageOnceItsLineFeedIsThere)
{
    sendApart("{\"ev");
    sendApart("ent\":");
    sendApart("\"a\"}");
    EXPECT_THAT(log.entries(), ElementsAre());
    agent.sendRaw("\n");
    ASSERT_TRUE(arrived("a"));
    EXPECT_THAT(log.entries(), ElementsAre("a"));
}

TEST_F(Framing, AnEndWithinALineNeverDeliversItsBeginning)
{
    std::atomic<bool> down = false;
    rpc.onDown = [&](const QString &) { down = true; };
    rpc.connect(agent.path());
    ASSERT_TRUE(agent.waitForClients(1));
    agent.sendRaw("{\"event\":\"whole\"}\n{\"event\":\"cut off\"}");
    agent.hangUp();
    ASSERT_TRUE(eventually([&] { return down.load(); }));
    EXPECT_THAT(log.entries(), ElementsAre("whole"));
}

TEST_F(Framing, TheBeginningOfALineDiesWithItsConnection)
{
    agent.sendRaw("{\"event\":\"cut ");
    QTest::qWait(20);
    rpc.connect(agent.path());
    ASSERT_TRUE(agent.waitForClients(1));
    agent.sendRaw("off\"}\n{\"event\":\"fresh\"}\n");
    ASSERT_TRUE(arrived("fresh"));
    EXPECT_THAT(log.entries(), ElementsAre("fresh"));
}

TEST_F(Framing, EmptyLinesAndCarriageReturnsDisturbNothing)
{
    agent.sendRaw("\n\n{\"event\":\"a\"}\r\n \n\r\n{\"event\":\"b\"}\n");
    ASSERT_TRUE(arrived("b"));
    EXPECT_THAT(log.entries(), ElementsAre("a", "b"));
}

TEST_F(Framing, LinesThatAreNoJsonObjectDisturbNothing)
{
    for (const char *line :
         {"garbage", "{\"event\":\"cut", "{\"event\":\"x\"} trailing", "{\"event\":\"x\"}{\"event\":\"y\"}", "[1]",
          "\"text\"", "5", "null", "true", "{'event':'x'}", "{\"event\":\"x\",}", "{\"event\":NaN}", "\x01\x02",
          "{\"event\":\"\xff\"}", "{\"event\":\"\xc3\"}", "{\"event\":\"\xed\xa0\x80\"}",
          "{\"\xfe\":1,\"event\":\"x\"}", "{\"event\":\"\\ud800\"}", "\xef\xbb\xbf{\"event\":\"x\"}"}) {
        agent.sendRaw(std::string(line) + "\n");
    }
    agent.sendRaw(std::string("{\"event\":\"a\0b\"}\n", 16)); // a raw control character within a text
    agent.sendRaw("{\"event\":\"end\"}\n");
    ASSERT_TRUE(arrived("end"));
    EXPECT_THAT(log.entries(), ElementsAre("end"));
}

TEST_F(Framing, GarbageBetweenTwoAnswersLeavesThemAlone)
{
    agent.silent("m");
    QCoro::Task<json::value> first = rpc.call("m", {}, 10s);
    QCoro::Task<json::value> second = rpc.call("m", {}, 10s);
    ASSERT_TRUE(agent.waitFor("m", 2));
    agent.sendRaw("{\"id\":1,\"result\":\"one\"}\n{\"id\":2,\"result\":\n\xff\xfe\n{\"id\":2,\"result\":\"two\"}\n");
    EXPECT_EQ(await(std::move(first)), "one");
    EXPECT_EQ(await(std::move(second)), "two");
}

} // namespace

} // namespace quillfen::test
