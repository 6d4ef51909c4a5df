// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include <gtest/gtest.h>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

namespace {

constexpr std::string_view bare = R"({"account": {"signed_in": true}})";

} // namespace

TEST(Engine, SettingUpReportsItsStepsAndEndsRunning)
{
    TestAgent agent(bare);
    EXPECT_EQ(json::serialize(agent.result("vm.status")), R"({"exists":false,"status":""})");
    const std::int64_t call = agent.start("vm.prepare");
    EXPECT_EQ(agent.refusal("vm.prepare"), "The engine is being set up already.");
    agent.pass(8.5);
    EXPECT_EQ(text(agent.lastEvent("vm.progress").at("message")), "Checking the download…");
    EXPECT_FALSE(agent.answer(call));
    agent.pass(5);
    EXPECT_EQ(agent.answer(call)->at("result").at("status"), json::value("Running"));
    EXPECT_EQ(agent.lastEvent("vm.changed"), agent.result("vm.status"));
    EXPECT_EQ(agent.result("vm.prepare").at("exists"), json::value(true)) << "again: there is nothing to do";
}

TEST(Engine, StartingBringsTheAppliancesBackThatRanBefore)
{
    TestAgent agent("engine-stopped");
    EXPECT_EQ(agent.result("vm.status").at("status"), json::value("Stopped"));
    const std::int64_t call = agent.start("vm.start");
    EXPECT_EQ(agent.lastEvent("vm.changed").at("status"), json::value("Starting"));
    EXPECT_EQ(agent.refusal("vm.start"), "The engine is starting already.");
    agent.pass(4.1);
    EXPECT_TRUE(agent.answer(call)->contains("result"));
    EXPECT_EQ(agent.result("volumes.status", {{"volume_id", 3121}}).at("appliance").at("online"), json::value(false));
    agent.pass(5);
    EXPECT_EQ(agent.result("volumes.status", {{"volume_id", 3121}}).at("appliance").at("online"), json::value(true));
    EXPECT_EQ(agent.result("volumes.status", {{"volume_id", 3134}}).at("appliance").at("connected"),
              json::value(false));
}

TEST(Engine, OneThatIsNotThereCannotStart)
{
    TestAgent agent(bare);
    EXPECT_EQ(agent.refusal("vm.start"), "The engine is not set up yet. Set it up first.");
}

TEST(Engine, ChecksComeWithWhatFixesThem)
{
    TestAgent agent("first-run");
    const json::value checks = agent.result("preflight.run");
    ASSERT_EQ(checks.as_array().size(), 4U);
    EXPECT_EQ(json::serialize(checks.at(3)),
              R"({"name":"Network access","ok":false,"info":"port 443 to the vault is blocked",)"
              R"("fix":"Allow outgoing connections on port 443, then open Quillfen again."})");
    EXPECT_EQ(checks.at(0).at("ok"), json::value(true));
}
