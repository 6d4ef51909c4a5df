// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include "localagent/world/mounts.h"

#include <gtest/gtest.h>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

namespace {

/// One volume whose last writes take a hundred seconds, one that has nothing left to upload.
constexpr std::string_view uploading = R"({
    "account": {"signed_in": true, "capacity_gb": 2048},
    "upload_mb_per_second": 10,
    "engine": {"exists": true},
    "volumes": [
        {"id": 1, "name": "busy", "size_gb": 10, "used_gb": 5, "pending_gb": 0.9765625, "mounted": true,
         "appliance": {"state": "online"}},
        {"id": 2, "name": "calm", "size_gb": 10, "used_gb": 5, "mounted": true, "appliance": {"state": "online"}},
        {"id": 3, "name": "away", "size_gb": 10, "appliance": {"state": "elsewhere"}}],
    "orphans": [{"container": "quill-vol-9-lost", "up": true, "since": "-1d"}]})";

std::string lastLine(const TestAgent &agent)
{
    return text(agent.lastEvent("vm.progress").at("message"));
}

} // namespace

TEST(EngineStop, WaitsUntilEveryLastChangeIsInTheVault)
{
    TestAgent agent(uploading);
    const std::int64_t call = agent.start("engine.stop_safely");
    EXPECT_EQ(agent.result("mount.state").as_array().size(), 1U) << "what has nothing to upload goes at once";
    EXPECT_EQ(lastLine(agent), "Uploading the last changes of busy · 1.0 GB left");
    agent.pass(95);
    EXPECT_FALSE(agent.answer(call));
    EXPECT_EQ(lastLine(agent), "Uploading the last changes of busy · 0.2 GB left");
    EXPECT_EQ(agent.result("vm.status").at("status"), json::value("Running"));
    EXPECT_EQ(agent.result("mount.state").as_array().size(), 1U);
    agent.pass(6);
    EXPECT_TRUE(agent.result("mount.state").as_array().empty());
    EXPECT_EQ(lastLine(agent), "Stopping the engine…");
    EXPECT_EQ(agent.lastEvent("vm.changed").at("status"), json::value("Stopping"));
    EXPECT_EQ(agent.result("volumes.status", {{"volume_id", 1}}).at("pending_bytes"), json::value(0));
    EXPECT_FALSE(agent.answer(call));
    agent.pass(4);
    EXPECT_EQ(agent.answer(call)->at("result").at("status"), json::value("Stopped"));
    EXPECT_EQ(agent.lastEvent("vm.changed"), agent.result("vm.status"));
    EXPECT_EQ(agent.refusal("appliance.list"), "The engine is not running.");
    EXPECT_FALSE(agent.world.state.orphans.front().up);
    EXPECT_EQ(agent.world.state.volumes.at(3).appliance, Appliance::Elsewhere);
}

TEST(EngineStop, TellsAgainAndAgainAndHowManyWaitBesides)
{
    TestAgent agent(R"({"account": {"signed_in": true}, "upload_mb_per_second": 1, "engine": {"exists": true},
        "volumes": [
            {"id": 1, "name": "one", "used_gb": 1, "pending_gb": 0.05, "appliance": {"state": "online"}},
            {"id": 2, "name": "two", "used_gb": 1, "pending_gb": 0.1, "appliance": {"state": "online"}}]})");
    agent.eventNames();
    agent.start("engine.stop_safely");
    EXPECT_EQ(lastLine(agent), "Uploading the last changes of one · 51 MB left · 1 more to go");
    agent.pass(45);
    EXPECT_EQ(lastLine(agent), "Uploading the last changes of one · 10 MB left · 1 more to go");
    agent.pass(10);
    EXPECT_EQ(lastLine(agent), "Uploading the last changes of two · 51 MB left");
    EXPECT_EQ(agent.eventNames(), "vm.progress vm.progress vm.progress vm.progress");
}

TEST(EngineStop, OneThatIsComingUpWithChangesIsWaitedFor)
{
    TestAgent agent(R"({"account": {"signed_in": true}, "engine": {"exists": true}, "volumes": [
        {"id": 1, "name": "slow", "used_gb": 1, "appliance": {"state": "stopped"}}]})");
    agent.start("appliance.deploy", {{"volume_id", 1}});
    agent.pass(1);
    const std::int64_t call = agent.start("engine.stop_safely");
    EXPECT_EQ(lastLine(agent), "Waiting for slow to come up");
    EXPECT_EQ(agent.refusal("appliance.deploy", {{"volume_id", 1}}),
              "The engine is being stopped. Start it again when that is done.");
    agent.pass(10);
    EXPECT_TRUE(agent.answer(call)->contains("result"));
    EXPECT_EQ(agent.world.state.volumes.at(1).appliance, Appliance::Stopped);
}

TEST(EngineStop, StartingAgainBringsTheAppliancesBack)
{
    TestAgent agent(uploading);
    agent.finish("engine.stop_safely");
    agent.finish("vm.start");
    agent.pass(5);
    EXPECT_EQ(agent.result("volumes.status", {{"volume_id", 1}}).at("appliance").at("online"), json::value(true));
    EXPECT_EQ(agent.result("mount.attach", {{"volume_id", 1}}).at("name"), json::value("busy"));
}

TEST(EngineStop, IsRefusedWhereThereIsNothingToStop)
{
    EXPECT_EQ(TestAgent("engine-stopped").refusal("engine.stop_safely"), "The engine is not running.");
    EXPECT_EQ(TestAgent(R"({"account": {"signed_in": true}})").refusal("engine.stop_safely"),
              "The engine is not set up yet; there is nothing to stop.");
    EXPECT_EQ(TestAgent("first-run").error("engine.stop_safely").at("status"), json::value(401));
}

TEST(EngineStop, NothingElseHappensToTheEngineMeanwhile)
{
    TestAgent agent(uploading);
    const std::int64_t call = agent.start("engine.stop_safely");
    EXPECT_EQ(agent.refusal("engine.stop_safely"), "The engine is being stopped already.");
    EXPECT_EQ(agent.refusal("vm.start"), "The engine is being stopped; start it when that is done.");
    agent.pass(101);
    EXPECT_EQ(agent.refusal("vm.start"), "The engine is being stopped; start it when that is done.")
        << "the last seconds count as well";
    agent.pass(5);
    EXPECT_TRUE(agent.answer(call)->contains("result"));
}

TEST(EngineStop, AVolumeThatIsBeingChangedIsFinishedFirst)
{
    TestAgent agent(uploading);
    agent.start("volumes.resize", {{"volume_id", 2}, {"size_bytes", 20 * gigabyte}});
    EXPECT_EQ(agent.refusal("engine.stop_safely"), "calm is being resized; wait until that is done.");
    agent.pass(5);
    agent.finish("engine.stop_safely");
}

TEST(EngineStop, GoesOnWithoutItsClient)
{
    TestAgent agent(uploading);
    agent.start("engine.stop_safely");
    agent.agent.closed(1);
    agent.pass(200);
    EXPECT_EQ(agent.result("vm.status").at("status"), json::value("Stopped"));
}
