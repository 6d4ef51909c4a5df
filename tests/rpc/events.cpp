// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpctest.h"

#include <thread>

namespace quillfen::test {

namespace {

using testing::ElementsAre;

struct Events : testing::Test {
    FakeAgent agent;
    Log log;
    RPC rpc;

    void SetUp() override
    {
        rpc.onEvent = [this](const std::string &name, const std::optional<json::value> &data) {
            log.add(name + " " + (data ? json::serialize(*data) : "without data"));
        };
        rpc.connect(agent.path());
        ASSERT_TRUE(agent.waitForClients(1));
    }
    bool arrived(std::size_t count)
    {
        return eventually([&] { return log.size() == count; });
    }
};

TEST_F(Events, ArriveWithNameAndData)
{
    agent.push("vm.changed", json::object{{"status", "Running"}});
    agent.push("volumes.changed", json::array{1, 2});
    ASSERT_TRUE(arrived(2));
    EXPECT_THAT(log.entries(), ElementsAre(R"(vm.changed {"status":"Running"})", "volumes.changed [1,2]"));
}

TEST_F(Events, WithoutAResultHaveNoDataAndWithNullHaveNull)
{
    agent.push("a");
    agent.push("b", json::value(nullptr));
    agent.push("");
    ASSERT_TRUE(arrived(3));
    EXPECT_THAT(log.entries(), ElementsAre("a without data", "b null", " without data"));
}

TEST_F(Events, AreEventsEvenWithTheIdOfACallOrAnError)
{
    agent.silent("m");
    QCoro::Task<json::value> call = rpc.call("m", {}, 10s);
    ASSERT_TRUE(agent.waitFor("m"));
    agent.sendRaw("{\"event\":\"e\",\"id\":1,\"result\":2,\"error\":{}}\n");
    ASSERT_TRUE(arrived(1));
    EXPECT_FALSE(call.isReady());
    agent.sendRaw("{\"id\":1,\"result\":3}\n");
    EXPECT_EQ(await(std::move(call)), 3);
    EXPECT_THAT(log.entries(), ElementsAre("e 2"));
}

TEST(EventsAndTheirReceiver, ItRunsOnTheReadingThread)
{
    FakeAgent agent;
    RPC rpc;
    std::atomic<std::thread::id> thread;
    rpc.onEvent = [&](const auto &, const auto &) { thread = std::this_thread::get_id(); };
    rpc.connect(agent.path());
    ASSERT_TRUE(agent.waitForClients(1));
    agent.push("e");
    ASSERT_TRUE(eventually([&] { return thread.load() != std::thread::id(); }));
    EXPECT_NE(thread.load(), std::this_thread::get_id());
}

TEST(EventsAndTheirReceiver, WithoutOneTheyAreDropped)
{
    FakeAgent agent;
    agent.answer("m", 1);
    RPC rpc;
    rpc.connect(agent.path());
    ASSERT_TRUE(agent.waitForClients(1));
    agent.push("e", json::object{{"id", 1}});
    EXPECT_EQ(await(rpc.call("m", {}, 10s)), 1);
}

TEST(EventsAndTheirReceiver, TheyKeepTheirOrderWithTheAnswersBetweenThem)
{
    FakeAgent agent;
    agent.silent("m");
    RPC rpc;
    Log log;
    rpc.onEvent = [&](const std::string &name, const auto &) { rpc.mainQueue().post([&log, name] { log.add(name); }); };
    rpc.connect(agent.path());
    note(rpc, "m", log);
    note(rpc, "m", log);
    ASSERT_TRUE(agent.waitFor("m", 2));
    agent.sendRaw("{\"event\":\"e1\"}\n{\"id\":1,\"result\":1}\n{\"event\":\"e2\"}\n{\"id\":2,\"result\":2}\n{"
                  "\"event\":\"e3\"}\n");
    ASSERT_TRUE(eventually([&] { return log.size() == 5; }));
    EXPECT_THAT(log.entries(), ElementsAre("e1", "m: 1", "e2", "m: 2", "e3"));
}

TEST(EventsAndTheirReceiver, AMillionInOneBurstAllArriveInOrder)
{
    FakeAgent agent;
    RPC rpc;
    std::int64_t next = 0;
    std::int64_t outOfOrder = 0;
    rpc.onEvent = [&](const std::string &, std::optional<json::value> data) {
        const std::int64_t number = data->as_int64();
        rpc.mainQueue().post([&next, &outOfOrder, number] { outOfOrder += number == next++ ? 0 : 1; });
    };
    rpc.connect(agent.path());
    ASSERT_TRUE(agent.waitForClients(1));
    constexpr std::int64_t count = 1'000'000;
    std::string burst;
    for (std::int64_t number = 0; number < count; ++number) {
        burst += R"({"event":"e","result":)" + std::to_string(number) + "}\n";
    }
    agent.sendRaw(burst);
    ASSERT_TRUE(eventually([&] { return next == count; }, 100s)) << next;
    EXPECT_EQ(outOfOrder, 0);
}

} // namespace

} // namespace quillfen::test
