// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include "localagent/world/worldfile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace {

json::value statusOf(TestAgent &agent, std::string_view name)
{
    return agent.result("volumes.status", {{"volume_id", agent.idOf(name)}});
}

std::string containerState(TestAgent &agent, std::string_view name)
{
    const json::value appliances = agent.result("appliance.list");
    for (const json::value &appliance : appliances.as_array()) {
        const json::object &record = appliance.as_object();
        if (record.contains("volume_id") && record.at("volume_id") == json::value(agent.idOf(name))) {
            return text(record.at("status"));
        }
    }
    return "not listed";
}

std::string loadError(std::string_view world)
{
    try {
        const TestAgent agent(world);
        return "none";
    } catch (const WorldError &error) {
        return error.what();
    }
}

} // namespace

TEST(Worlds, AreBuiltIn)
{
    EXPECT_THAT(worldNames(), UnorderedElementsAre("empty", "engine-stopped", "everyday", "first-run", "large", "lists",
                                                   "million", "operator", "operator-large"));
    for (const std::string &name : worldNames()) {
        EXPECT_NO_THROW(TestAgent agent(name)) << name;
    }
}

TEST(Worlds, EverydayHasAVolumeInEveryState)
{
    TestAgent agent("everyday");
    const json::value documents = statusOf(agent, "Documents");
    EXPECT_EQ(json::serialize(documents.at("appliance")), R"({"online":true,"connected":true,"pending_bytes":0})");
    EXPECT_EQ(documents.at("offsite").at("percent"), json::value(100));
    EXPECT_EQ(sizeText(documents.at("sync").at("local").at("FS_USED_BYTES").as_int64()), "61.4 GB");
    EXPECT_EQ(documents.at("sync").at("cache_bytes"), documents.at("cache_bytes"));
    EXPECT_EQ(containerState(agent, "Documents"), "Up 6 days");

    EXPECT_EQ(statusOf(agent, "photos-archive").at("offsite").at("percent"), json::value(87));
    EXPECT_GT(statusOf(agent, "photos-archive").at("pending_bytes").as_int64(), 0);

    EXPECT_EQ(json::serialize(statusOf(agent, "studio-projects").at("appliance")),
              R"({"online":false,"connected":true,"pending_bytes":0})");
    EXPECT_EQ(containerState(agent, "studio-projects"), "Up 2 minutes");

    EXPECT_EQ(json::serialize(statusOf(agent, "accounts-2025").at("sync").at("local")), "{}");
    EXPECT_EQ(containerState(agent, "accounts-2025"), "Exited (0) 3 days ago");

    EXPECT_TRUE(agent.world.home.hasKey("Documents"));
    EXPECT_TRUE(agent.world.home.hasKey("accounts-2025"));
    EXPECT_FALSE(agent.world.home.hasKey("vm-store"));
    EXPECT_EQ(agent.result("mount.state").as_array().size(), 3U);
    EXPECT_EQ(agent.result("auth.status").at("email"), json::value("mara@northmere.example"));
    EXPECT_EQ(agent.result("account").at("capacity_gb"), json::value(2048.0));
}

TEST(Worlds, AnUploadDrainsAndAConnectionComesUpAsTimePasses)
{
    TestAgent agent("everyday");
    agent.pass(60);
    EXPECT_EQ(statusOf(agent, "photos-archive").at("offsite").at("percent"), json::value(87)) << "not while one looks";
    agent.pass(600);
    EXPECT_EQ(statusOf(agent, "photos-archive").at("offsite").at("percent"), json::value(89));
    EXPECT_EQ(statusOf(agent, "studio-projects").at("appliance").at("online"), json::value(true));
    agent.pass(6 * 3600);
    EXPECT_EQ(json::serialize(statusOf(agent, "photos-archive").at("appliance")),
              R"({"online":true,"connected":true,"pending_bytes":0})");
    EXPECT_EQ(statusOf(agent, "photos-archive").at("offsite").at("percent"), json::value(100));
}

TEST(Worlds, ListsHasOrphansAReadyCopyAndAKeyThatIsElsewhere)
{
    TestAgent agent("lists");
    const json::value orphans = agent.result("appliance.orphans");
    EXPECT_EQ(json::serialize(orphans.at(0)),
              R"({"container":"quill-vol-3107-scratch","status":"Exited (0) 3 days ago","ports":"4453, 32604"})");
    EXPECT_EQ(orphans.at(1).at("status"), json::value("Up 6 hours"));
    const json::value copies = agent.result("recoveries.list_for_volume", {{"volume_id", 3121}}).at("recoveries");
    EXPECT_EQ(copies.at(0).at("name"), json::value("Documents-202611191200"));
    EXPECT_EQ(copies.at(0).at("state"), json::value("ready"));
    EXPECT_TRUE(copies.at(0).at("hydration_pct").is_null());
    EXPECT_FALSE(agent.world.home.hasKey("accounts"));
    EXPECT_EQ(agent.result("volumes.list").at(4).at("key_volume"), json::value("accounts"));
}

TEST(Worlds, OperatorsAreOperatorsAndOthersAreNot)
{
    EXPECT_EQ(TestAgent("operator").result("auth.status").at("is_admin"), json::value(true));
    EXPECT_EQ(TestAgent("everyday").result("auth.status").at("is_admin"), json::value(false));
}

TEST(Worlds, LargeHasTenThousandVolumesThatTheSeedDecides)
{
    TestAgent one("large");
    TestAgent other("large");
    const json::value volumes = one.result("volumes.list");
    ASSERT_EQ(volumes.as_array().size(), 10000U);
    EXPECT_EQ(volumes, other.result("volumes.list"));
    std::set<std::string> names;
    for (const json::value &volume : volumes.as_array()) {
        names.insert(text(volume.at("name")));
    }
    EXPECT_EQ(names.size(), 10000U);
    EXPECT_EQ(one.result("mount.state").as_array().size(), 24U);
}

TEST(Worlds, AMistakeInAFileIsNamedWithItsPlace)
{
    EXPECT_THAT(loadError("{"), HasSubstr("the world is not JSON"));
    EXPECT_EQ(loadError(R"({"account": 5})"), "account is not an object");
    EXPECT_EQ(loadError(R"({"account": {"signed_in": "yes"}})"), "account.signed_in is neither true nor false");
    EXPECT_EQ(loadError(R"({"volumes": [{"name": "a"}, {"name": "b", "size_gb": "big"}]})"),
              "volumes[1].size_gb is not a number");
    EXPECT_EQ(loadError(R"({"volumes": [{"name": "a"}, {"name": "A"}]})"),
              "volumes[1].name will not do: A volume named a exists already.");
    EXPECT_EQ(loadError(R"({"volumes": [{"name": "a", "share": "ftp"}]})"),
              "volumes[0].share is none of smb, nfs, iscsi");
    EXPECT_EQ(loadError(R"({"volumes": [{"name": "a", "policy": "1,2,3"}]})"),
              "volumes[0].policy is not six numbers with commas between them");
    EXPECT_EQ(loadError(R"({"views": [{"volume_id": 9, "name": "x"}]})"),
              "views[0].volume_id names no volume of this world");
    EXPECT_THAT(loadError(R"({"volumes": [{"name": "a", "created": "May"}]})"),
                HasSubstr("volumes[0].created is wrong: \"May\" is not a moment"));
    EXPECT_EQ(loadError(R"({"copies": [{"volume_id": 9}]})"), "copies[0].volume_id names no volume of this world");
    EXPECT_THROW(static_cast<void>(readWorld("nowhere")), WorldError);
}
