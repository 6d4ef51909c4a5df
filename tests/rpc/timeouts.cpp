// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "rpc/pendingcall.h"
#include "rpctest.h"

#include <QAbstractEventDispatcher>
#include <QTimer>

#include <limits>

namespace quillfen::test {

namespace {

using testing::ElementsAre;
using TimeOuts = RPCTest;

QString textAfter(RPC::Seconds timeout)
{
    PendingCall call("vm.status", timeout);
    call.failLate();
    try {
        static_cast<void>(call.outcome());
    } catch (const RPCError &error) {
        EXPECT_EQ(error.code, -32000);
        return error.message;
    }
    return {};
}

TEST(TimeOutTexts, NameTheMethodAndTheSecondsCutToWholeOnes)
{
    EXPECT_EQ(textAfter(30s), QStringLiteral("vm.status: no answer from the agent after 30 s"));
    EXPECT_EQ(textAfter(2'900ms), QStringLiteral("vm.status: no answer from the agent after 2 s"));
    EXPECT_EQ(textAfter(999ms), QStringLiteral("vm.status: no answer from the agent after 0 s"));
    EXPECT_EQ(textAfter(-2'900ms), QStringLiteral("vm.status: no answer from the agent after -2 s"));
}

TEST(TimeOutTexts, TakeAMethodForWhatItIs)
{
    PendingCall call("%2 %1", 1s);
    call.failLate();
    EXPECT_THAT([&] { static_cast<void>(call.outcome()); },
                testing::Throws<RPCError>(
                    testing::Field(&RPCError::message, QStringLiteral("%2 %1: no answer from the agent after 1 s"))));
}

TEST_F(TimeOuts, EndACallThatIsNotAnswered)
{
    agent.silent("vm.status");
    const auto begin = std::chrono::steady_clock::now();
    const RPCError error = failureOf(rpc.call("vm.status", {}, 50ms));
    EXPECT_EQ(error.code, -32000);
    EXPECT_EQ(error.message, QStringLiteral("vm.status: no answer from the agent after 0 s"));
    EXPECT_EQ(error.status, std::nullopt);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 50ms);
}

TEST_F(TimeOuts, TheAnswerThatComesTooLateIsDropped)
{
    agent.hold("vm.status");
    agent.answer("vm.status", "late");
    agent.answer("account", "in time");
    EXPECT_EQ(failureOf(rpc.call("vm.status", {}, 20ms)).code, RPCError::noAnswer);
    agent.release("vm.status");
    EXPECT_EQ(ask("account"), "in time");
    EXPECT_EQ(ask("vm.status"), "late") << "a later call of the same method gets its own answer";
}

TEST_F(TimeOuts, ComeInTheOrderOfTheirDeadlinesNotOfTheirCalls)
{
    agent.silent("long");
    agent.silent("short");
    agent.silent("middle");
    Log log;
    note(rpc, "long", log, 150ms);
    note(rpc, "short", log, 30ms);
    note(rpc, "middle", log, 90ms);
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_THAT(log.entries(), ElementsAre("short: short: no answer from the agent after 0 s",
                                           "middle: middle: no answer from the agent after 0 s",
                                           "long: long: no answer from the agent after 0 s"));
}

TEST_F(TimeOuts, ThatAreNoTimeAtAllEndTheCallSoon)
{
    agent.silent("m");
    for (const double seconds : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(failureOf(rpc.call("m", {}, RPC::Seconds(seconds))).code, RPCError::noAnswer) << seconds;
    }
}

TEST_F(TimeOuts, BeyondAllMeasureNeverCome)
{
    agent.hold("m");
    agent.answer("m", "at last");
    for (const double seconds : {1e300, std::numeric_limits<double>::infinity()}) {
        QCoro::Task<json::value> call = rpc.call("m", {}, RPC::Seconds(seconds));
        QTest::qWait(20);
        EXPECT_FALSE(call.isReady());
        ASSERT_TRUE(agent.waitFor("m"));
        agent.release("m");
        EXPECT_EQ(await(std::move(call)), "at last");
        agent.hold("m");
        agent.clearLog();
    }
}

TEST_F(TimeOuts, OfAnsweredCallsDoNotWakeAnIdleClient)
{
    agent.answer("m", 1);
    for (int count = 0; count < 20; ++count) {
        ask("m", {}, 100ms);
    }
    QTest::qWait(20);
    int awoken = 0;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &rpc.mainQueue(),
                     [&] { ++awoken; });
    QEventLoop loop;
    QTimer::singleShot(400ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_LE(awoken, 3) << "the loop's own start and the timer that ends it";
}

TEST_F(TimeOuts, KeepWorkingAmongTwentyThousandCalls)
{
    agent.silent("never");
    agent.answer("m", 1);
    std::vector<QCoro::Task<json::value>> waiting;
    for (int count = 0; count < 20'000; ++count) {
        waiting.push_back(rpc.call("never", {}, 30s));
    }
    EXPECT_EQ(failureOf(rpc.call("never", {}, 30ms)).code, RPCError::noAnswer);
    EXPECT_EQ(ask("m"), 1);
    rpc.close();
    for (QCoro::Task<json::value> &call : waiting) {
        ASSERT_EQ(failureOf(std::move(call)).code, RPCError::connectionClosed);
    }
}

} // namespace

} // namespace quillfen::test
