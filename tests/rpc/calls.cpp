// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpctest.h"

#include <QThread>

namespace quillfen::test {

namespace {

using testing::ElementsAre;
using Calls = RPCTest;

TEST_F(Calls, ResumeWithTheResultOfTheAnswer)
{
    agent.answer("volumes.list", json::array{json::object{{"id", 9'007'199'254'740'993}}});
    EXPECT_EQ(json::serialize(ask("volumes.list")), R"([{"id":9007199254740993}])");
}

QCoro::Task<> noteThread(RPC &rpc, QThread *&thread)
{
    const json::object none;
    co_await rpc.call("account", none, 10s);
    thread = QThread::currentThread();
}

TEST_F(Calls, ResumeOnTheMainThread)
{
    agent.answer("account", nullptr);
    QThread *resumedOn = nullptr;
    noteThread(rpc, resumedOn);
    ASSERT_TRUE(eventually([&] { return resumedOn != nullptr; }));
    EXPECT_EQ(resumedOn, QCoreApplication::instance()->thread());
}

TEST_F(Calls, CountTheirIdsFromOne)
{
    agent.answer("account", nullptr);
    for (int count = 0; count < 3; ++count) {
        ask("account");
    }
    std::vector<std::int64_t> ids;
    for (const FakeAgent::Request &request : agent.requests()) {
        ids.push_back(request.id);
    }
    EXPECT_THAT(ids, ElementsAre(1, 2, 3));
}

TEST_F(Calls, AnAnswerOfNullIsNull)
{
    agent.queueRaw("m", R"({"id":$ID,"result":null})");
    EXPECT_TRUE(ask("m").is_null());
}

TEST_F(Calls, AnAnswerWithNeitherResultNorErrorIsNull)
{
    agent.queueRaw("m", R"({"id":$ID})");
    EXPECT_TRUE(ask("m").is_null());
}

TEST_F(Calls, AnErrorBringsItsCodeMessageAndStatus)
{
    agent.fail("m", {-32050, "the plan is full · 2 TB", 409});
    const RPCError error = failureOf(rpc.call("m", {}, 10s));
    EXPECT_EQ(error.code, -32050);
    EXPECT_EQ(error.message, QStringLiteral("the plan is full · 2 TB"));
    EXPECT_EQ(error.status, 409);
    EXPECT_STREQ(error.what(), "the plan is full · 2 TB");
}

/// What an "error" object of this text becomes.
struct ErrorCase {
    const char *error;
    std::int64_t code;
    const char *message;
    std::optional<std::int64_t> status;
};

TEST_F(Calls, AnIncompleteErrorIsStillAnError)
{
    const std::vector<ErrorCase> cases{
        {R"({"message":"no"})", -1, "no", {}},
        {R"({})", -1, "error", {}},
        {R"({"code":"5","message":7,"status":"x"})", -1, "error", {}},
        {R"({"code":5.0,"message":"no","status":4.04e2})", 5, "no", 404},
        {R"({"code":5.5,"message":"no","status":1e300})", -1, "no", {}},
        {R"({"code":9223372036854775808,"message":"no","status":9223372036854775807})", -1, "no", INT64_MAX},
        {R"({"code":null,"message":null,"status":null})", -1, "error", {}},
        {R"({"code":1,"message":""})", 1, "", {}},
    };
    for (const ErrorCase &expected : cases) {
        SCOPED_TRACE(expected.error);
        agent.queueRaw("m", std::string(R"({"id":$ID,"error":)") + expected.error + "}");
        const RPCError error = failureOf(rpc.call("m", {}, 10s));
        EXPECT_EQ(error.code, expected.code);
        EXPECT_EQ(error.message, QString::fromUtf8(expected.message));
        EXPECT_EQ(error.status, expected.status);
    }
}

TEST_F(Calls, AnErrorGoesBeforeAResult)
{
    agent.queueRaw("m", R"({"id":$ID,"result":1,"error":{"message":"no"}})");
    EXPECT_EQ(failureOf(rpc.call("m", {}, 10s)).message, QStringLiteral("no"));
}

TEST_F(Calls, AnErrorThatIsNoObjectIsIgnored)
{
    for (const char *error : {"null", "\"no\"", "[1]", "5", "true"}) {
        agent.queueRaw("m", std::string(R"({"id":$ID,"result":"fine","error":)") + error + "}");
        EXPECT_EQ(ask("m"), "fine") << error;
        agent.queueRaw("m", std::string(R"({"id":$ID,"error":)") + error + "}");
        EXPECT_TRUE(ask("m").is_null()) << error;
    }
}

TEST_F(Calls, AnswersMayComeInAnyOrder)
{
    agent.silent("a");
    agent.silent("b");
    QCoro::Task<json::value> first = rpc.call("a", {}, 10s);
    QCoro::Task<json::value> second = rpc.call("b", {}, 10s);
    ASSERT_TRUE(agent.waitFor("b"));
    agent.sendRaw("{\"id\":2,\"result\":\"second\"}\n{\"id\":1,\"result\":\"first\"}\n");
    EXPECT_EQ(await(std::move(first)), "first");
    EXPECT_EQ(await(std::move(second)), "second");
}

TEST_F(Calls, AnIdWrittenAsAFractionlessNumberCounts)
{
    agent.queueRaw("m", R"({"id":$ID.0,"result":"fine"})");
    EXPECT_EQ(ask("m"), "fine");
}

TEST_F(Calls, AnswersWithAnIdThatIsNoIntegerAreDropped)
{
    agent.queueRaw(
        "m", "{\"id\":\"$ID\",\"result\":1}\n{\"result\":2}\n{\"id\":null,\"result\":3}\n{\"id\":[$ID],\"result\":4}\n"
             "{\"id\":$ID.5,\"result\":5}\n{\"id\":true,\"result\":6}\n{\"id\":$ID,\"result\":\"mine\"}");
    EXPECT_EQ(ask("m"), "mine");
}

TEST_F(Calls, ASecondAnswerToTheSameCallIsDropped)
{
    agent.queueRaw("m", "{\"id\":$ID,\"result\":1}\n{\"id\":$ID,\"result\":2}\n{\"id\":77,\"result\":3}");
    agent.answer("n", "next");
    EXPECT_EQ(ask("m"), 1);
    EXPECT_EQ(ask("n"), "next");
}

TEST_F(Calls, ALineWithANumberForAnEventAndAnIdIsAnAnswer)
{
    rpc.onEvent = [](const std::string &name, const auto &) { ADD_FAILURE() << "event " << name; };
    rpc.connect(agent.path());
    agent.queueRaw("m", R"({"event":5,"id":$ID,"result":"an answer"})");
    EXPECT_EQ(ask("m"), "an answer");
}

TEST_F(Calls, ALargeAnswerIsHandedOverWithoutACopy)
{
    // A copy would lie in the default memory; what was parsed lies in the arena of its line.
    agent.answer("volumes.list", json::array(1'000, json::object{{"name", "a name too long to be kept in place"}}));
    const json::value answer = ask("volumes.list");
    EXPECT_NE(answer.storage().get(), json::storage_ptr().get());
    EXPECT_EQ(answer.get_array().back().storage().get(), answer.storage().get());
}

TEST_F(Calls, APartOfAnAnswerOutlivesTheRest)
{
    agent.answer("vm.status", json::object{{"list", json::array{"a name too long to be kept in place"}}});
    json::value part;
    {
        json::value answer = ask("vm.status");
        part = std::move(answer.get_object()["list"]);
    }
    EXPECT_EQ(json::serialize(part), R"(["a name too long to be kept in place"])");
}

TEST_F(Calls, AThousandAtOnceEachGetTheirOwnAnswer)
{
    agent.on("echo", [](const json::object &given) -> FakeAgent::Answer { return given.at("n"); });
    std::vector<QCoro::Task<json::value>> calls;
    for (int n = 0; n < 1'000; ++n) {
        calls.push_back(rpc.call("echo", params("n", n, "padding", std::string(500, 'x')), 30s));
    }
    for (int n = 0; n < 1'000; ++n) {
        ASSERT_EQ(await(std::move(calls[static_cast<std::size_t>(n)])), n);
    }
}

TEST_F(Calls, ACallThatNobodyAwaitsRunsToItsEnd)
{
    agent.answer("m", 1);
    static_cast<void>(rpc.call("m", {}, 10s));
    ASSERT_TRUE(agent.waitFor("m"));
    agent.answer("n", 2);
    EXPECT_EQ(ask("n"), 2);
}

TEST(CallsWithoutAConnection, FailSoonAndNotByTheirTimeOut)
{
    RPC rpc;
    QCoro::Task<json::value> call = rpc.call("account", {}, 3'600s);
    EXPECT_FALSE(call.isReady()) << "callers count on being suspended";
    const RPCError error = failureOf(std::move(call));
    EXPECT_EQ(error.code, -32603);
    EXPECT_EQ(error.message, QStringLiteral("the agent connection closed"));
    EXPECT_EQ(error.status, std::nullopt);
}

} // namespace

} // namespace quillfen::test
