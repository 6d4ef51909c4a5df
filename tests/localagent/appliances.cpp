// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include "localagent/world/appliances.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

namespace {

json::object id(std::int64_t volume)
{
    return {{"volume_id", volume}};
}

std::int64_t created(TestAgent &agent, std::string_view encryption = "vault")
{
    return agent.result("volumes.create", {{"name", "new"}, {"size_bytes", 10 * gigabyte}, {"encryption", encryption}})
        .at("id")
        .as_int64();
}

mode_t modeOf(const std::string &path)
{
    struct stat info = {};
    EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
    return info.st_mode & 0777U;
}

} // namespace

TEST(Appliances, AFirstStartGoesFromContainerToOnlineToUploaded)
{
    TestAgent agent;
    const std::int64_t volume = created(agent);
    agent.eventNames();
    const std::int64_t call = agent.start("appliance.deploy", id(volume));
    agent.pass(2);
    EXPECT_FALSE(agent.answer(call)) << "it takes seconds";
    EXPECT_EQ(agent.eventNames(), "appliance.progress appliance.progress");
    EXPECT_EQ(agent.refusal("mount.attach", id(volume)),
              "The appliance of new is still coming up; try again in a few seconds.");
    agent.pass(1.5);
    ASSERT_TRUE(agent.answer(call));
    EXPECT_EQ(agent.answer(call)->at("result").at("status"), json::value("Up 0 seconds"));
    EXPECT_EQ(agent.refusal("mount.attach", id(volume)),
              "The appliance of new is still coming up; try again in a few seconds.");
    agent.pass(4);
    EXPECT_EQ(agent.result("mount.attach", id(volume)).at("mounted"), json::value(true));
    const std::int64_t pending = agent.result("volumes.status", id(volume)).at("pending_bytes").as_int64();
    EXPECT_GT(pending, 0);
    agent.pass(1);
    EXPECT_LT(agent.result("volumes.status", id(volume)).at("pending_bytes").as_int64(), pending);
    agent.result("mount.detach", id(volume));
    const std::size_t points = agent.result("restore_points.list", id(volume)).at("points").as_array().size();
    agent.pass(20);
    EXPECT_EQ(agent.result("volumes.status", id(volume)).at("pending_bytes"), json::value(0));
    EXPECT_EQ(agent.result("restore_points.list", id(volume)).at("points").as_array().size(), points + 1)
        << "the end of the upload is one";
}

TEST(Appliances, TwoStartsOfOneVolumeEndTogether)
{
    TestAgent agent;
    const std::int64_t volume = created(agent);
    const std::int64_t one = agent.start("appliance.deploy", id(volume));
    agent.pass(1);
    const std::int64_t two = agent.start("appliance.deploy", id(volume));
    agent.pass(1.9);
    EXPECT_FALSE(agent.answer(one) || agent.answer(two));
    agent.pass(0.3);
    EXPECT_TRUE(agent.answer(one)->contains("result"));
    EXPECT_TRUE(agent.answer(two)->contains("result"));
}

TEST(Appliances, OneThatRunsAnswersAtOnce)
{
    TestAgent agent;
    EXPECT_EQ(agent.result("appliance.deploy", id(3121)).at("status"), json::value("Up 6 days"));
}

TEST(Appliances, AVolumeDeletedWhileItsApplianceComesUpEndsBothCalls)
{
    TestAgent agent;
    const std::int64_t volume = created(agent);
    const std::int64_t start = agent.start("appliance.deploy", id(volume));
    agent.pass(0.5);
    agent.finish("volumes.remove", id(volume));
    agent.pass(10);
    EXPECT_EQ(agent.answer(start)->at("error").at("code"), json::value(-32001));
}

TEST(Appliances, ACustomersKeyIsMadeAtTheFirstStartAndOnlyForTheUser)
{
    TestAgent agent;
    const std::int64_t volume = created(agent, "customer");
    const std::string key = agent.world.home.keyFile("new");
    EXPECT_FALSE(std::filesystem::exists(key));
    agent.finish("appliance.deploy", id(volume));
    EXPECT_EQ(modeOf(key), 0600U);
    EXPECT_EQ(modeOf(std::filesystem::path(key).parent_path()), 0700U);
    EXPECT_EQ(std::filesystem::file_size(key), 45U);
}

TEST(Appliances, AnExistingKeyIsNeverOverwritten)
{
    TestAgent agent;
    const std::string key = agent.world.home.keyFile("new");
    std::ofstream(key) << "mine";
    agent.finish("appliance.deploy", id(created(agent, "customer")));
    std::string content;
    std::ifstream(key) >> content;
    EXPECT_EQ(content, "mine");
}

TEST(Appliances, AKeyThatIsElsewhereIsNotMadeAnew)
{
    TestAgent agent("lists");
    EXPECT_EQ(agent.refusal("appliance.deploy", id(3134)),
              "The key of accounts-2025 is not on this computer. Put it at " + agent.world.home.keyFile("accounts") +
                  " and start again.");
    EXPECT_FALSE(agent.world.home.hasKey("accounts"));
}

TEST(Appliances, WithoutAnEngineNothingStarts)
{
    TestAgent stopped("engine-stopped");
    EXPECT_EQ(stopped.refusal("appliance.deploy", id(3121)),
              "The engine is not running. Start it under Account & engine.");
    EXPECT_EQ(stopped.refusal("appliance.list"), "The engine is not running.");
    TestAgent none(R"({"account": {"signed_in": true}, "volumes": [{"id": 1, "name": "a"}]})");
    EXPECT_EQ(none.refusal("appliance.deploy", id(1)),
              "The engine is not set up yet. Set it up under Account & engine.");
}

TEST(Appliances, OneThatRunsElsewhereStaysThere)
{
    TestAgent agent(R"({"account": {"signed_in": true}, "engine": {"exists": true},
                        "volumes": [{"id": 1, "name": "a", "appliance": {"state": "elsewhere"}}]})");
    EXPECT_EQ(agent.refusal("appliance.deploy", id(1)), "a is running on another computer. Stop it there first.");
    EXPECT_EQ(agent.refusal("mount.attach", id(1)), "a is running on another computer. Stop it there first.");
    EXPECT_TRUE(agent.result("appliance.list").as_array().empty());
}

TEST(Appliances, OrphansGoAndVolumesStay)
{
    TestAgent agent("lists");
    EXPECT_EQ(agent.refusal("appliance.remove", {{"container", "quill-vol-3121-documents"}}),
              "quill-vol-3121-documents serves the volume Documents; delete the volume instead.");
    EXPECT_EQ(agent.refusal("appliance.remove", {{"container", "x"}}), "There is no appliance x on this computer.");
    const std::int64_t call = agent.start("appliance.remove", {{"container", "quill-vol-2988-old-site"}});
    EXPECT_EQ(agent.refusal("appliance.remove", {{"container", "quill-vol-2988-old-site"}}),
              "quill-vol-2988-old-site is being removed already.");
    agent.pass(5);
    EXPECT_TRUE(agent.answer(call)->contains("result"));
    EXPECT_EQ(agent.result("appliance.orphans").as_array().size(), 1U);
}

TEST(Appliances, ContainersAreNamedPlainly)
{
    EXPECT_EQ(slugOf("Client Work (old)"), "client-work-old");
    EXPECT_EQ(slugOf("写真"), "volume");
}
