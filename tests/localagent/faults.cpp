// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/faults.h"

#include "testagent.h"

#include <gtest/gtest.h>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

TEST(Faults, AFailureIsWrittenWithOrWithoutStatus)
{
    Faults faults;
    faults.addFailure("vm.status=-7:out of order");
    faults.addFailure("account=-8:503:back soon: at 10:30");
    EXPECT_EQ(faults.of("vm.status")->failure->code, -7);
    EXPECT_EQ(faults.of("vm.status")->failure->message, "out of order");
    EXPECT_FALSE(faults.of("vm.status")->failure->status);
    EXPECT_EQ(faults.of("account")->failure->status, 503);
    EXPECT_EQ(faults.of("account")->failure->message, "back soon: at 10:30");
}

TEST(Faults, AMalformedSwitchSaysHowItIsWritten)
{
    Faults faults;
    for (const char *wrong : {"", "vm.status", "=1:x", "vm.status=", "vm.status=no", "vm.status=5"}) {
        EXPECT_THROW(faults.addFailure(wrong), FaultError) << wrong;
    }
    for (const char *wrong :
         {"vm.status", "vm.status=", "vm.status=-1", "vm.status=inf", "vm.status=nan", "vm.status=1s"}) {
        EXPECT_THROW(faults.addDelay(wrong), FaultError) << wrong;
    }
    EXPECT_TRUE(faults.methods.empty() || !faults.methods.begin()->second.failure);
}

TEST(Faults, AStarStandsForMethodsWithoutFaultsOfTheirOwn)
{
    Faults faults;
    faults.addFailure("*=1:all");
    faults.addDelay("account=1");
    EXPECT_EQ(faults.of("vm.status")->failure->message, "all");
    EXPECT_FALSE(faults.of("account")->failure);
}

TEST(Faults, ADelayedCallIsWorkedOnLate)
{
    Faults faults;
    faults.addDelay("vm.status=2");
    TestAgent agent("everyday", faults);
    const std::int64_t slow = agent.start("vm.status");
    EXPECT_TRUE(agent.answer(agent.start("account"))); // others are not held up
    agent.pass(1.9);
    EXPECT_FALSE(agent.answer(slow));
    agent.pass(0.2);
    EXPECT_TRUE(agent.answer(slow));
}

TEST(Faults, AnUnknownMethodCanBeMadeToFailToo)
{
    Faults faults;
    faults.addFailure("made.up=-9:418:a text");
    TestAgent agent("everyday", faults);
    EXPECT_EQ(json::serialize(agent.error("made.up")), R"({"code":-9,"message":"a text","status":418})");
}

TEST(Faults, AreSetAndClearedAtRunTime)
{
    TestAgent agent;
    agent.result("localagent.fault", {{"kind", "fail"}, {"method", "account"}, {"code", -3}, {"message", "tired"}});
    EXPECT_EQ(agent.refusal("account"), "tired");
    agent.result("localagent.fault", {{"kind", "silent"}, {"method", "vm.status"}});
    EXPECT_FALSE(agent.answer(agent.start("vm.status")));
    agent.result("localagent.fault", {{"kind", "drop"}, {"method", "mount.state"}});
    agent.start("mount.state");
    EXPECT_EQ(agent.dropped, std::vector<ClientId>{1});
    agent.result("localagent.fault", {{"kind", "stop_reading"}, {"seconds", 1}});
    agent.result("localagent.fault", {{"kind", "drop_after"}, {"seconds", 2}});
    agent.pass(1);
    EXPECT_EQ(agent.stopped, std::vector<ClientId>{1});
    agent.pass(1);
    EXPECT_EQ(agent.dropped.size(), 2U);
    agent.result("localagent.fault", {{"kind", "clear"}});
    EXPECT_TRUE(agent.result("account").is_object());
    EXPECT_EQ(
        agent.refusal("localagent.fault", {{"kind", "explode"}}),
        "localagent.fault needs kind, one of delay, fail, drop, silent, garbage, drop_after, stop_reading, clear");
}

TEST(Faults, GarbageStandsBeforeEveryAnswerAndDoesNotTouchIt)
{
    TestAgent agent;
    agent.result("localagent.fault", {{"kind", "garbage"}});
    const std::size_t before = agent.lines.size();
    for (int call = 0; call < 8; ++call) {
        EXPECT_TRUE(agent.result("account").is_object());
    }
    EXPECT_EQ(agent.lines.size() - before, 16U);
}
