// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

namespace {

json::object wanted(std::string_view name, std::int64_t gb)
{
    return {{"name", name}, {"size_bytes", gb * gigabyte}, {"presentation_type", "smb"}};
}

json::object id(std::int64_t volume)
{
    return {{"volume_id", volume}};
}

json::object size(std::int64_t volume, std::int64_t gb)
{
    return {{"volume_id", volume}, {"size_bytes", gb * gigabyte}};
}

} // namespace

TEST(Volumes, ACreatedVolumeIsListedAndAnnouncedWithTheSameRecord)
{
    TestAgent agent;
    const json::value made = agent.result("volumes.create", wanted("photos", 5));
    EXPECT_EQ(made.at("size_bytes"), json::value(5 * gigabyte));
    EXPECT_EQ(made.at("encryption"), json::value("vault"));
    const json::value list = agent.result("volumes.list");
    EXPECT_EQ(list.as_array().back(), made);
    EXPECT_EQ(agent.eventNames(), "volumes.changed");
    EXPECT_EQ(agent.lastEvent("volumes.changed"), list);
}

TEST(Volumes, NamesAreUniqueAsFolders)
{
    TestAgent agent;
    EXPECT_EQ(agent.refusal("volumes.create", wanted("Documents", 5)), "A volume named Documents exists already.");
    EXPECT_EQ(agent.refusal("volumes.create", wanted("DOCUMENTS", 5)), "A volume named Documents exists already.");
    EXPECT_EQ(agent.refusal("volumes.create", wanted("../Documents", 5)),
              "The name cannot begin with a point: its folder would be hidden.");
    EXPECT_EQ(agent.eventNames(), "");
}

TEST(Volumes, ThePlanLimitsWhatIsCreated)
{
    TestAgent agent; // 1288 of 2048 GB are allocated
    EXPECT_EQ(agent.refusal("volumes.create", wanted("big", 761)), "Only 760 GB are left on your plan.");
    agent.result("volumes.create", wanted("big", 760));
    EXPECT_EQ(agent.refusal("volumes.create", wanted("more", 1)), "Only 0 GB are left on your plan.");
    EXPECT_EQ(agent.refusal("volumes.create", wanted("none", 0)), "A volume has at least 1 GB.");
    EXPECT_EQ(agent.refusal("volumes.create", wanted("less", -5)), "A volume has at least 1 GB.");
}

TEST(Volumes, ResizingUnmountsAndComesBackMounted)
{
    TestAgent agent;
    const std::int64_t call = agent.start("volumes.resize", size(3121, 120));
    EXPECT_EQ(agent.result("mount.state").as_array().size(), 2U);
    EXPECT_EQ(agent.refusal("volumes.resize", size(3121, 130)), "Documents is being resized; wait until that is done.");
    EXPECT_EQ(agent.refusal("mount.attach", id(3121)), "Documents is being resized; wait until that is done.");
    agent.pass(10);
    EXPECT_EQ(json::serialize(agent.answer(call)->at("result")),
              R"({"id":3121,"size_bytes":128849018880,"remounted":true})");
    EXPECT_EQ(agent.result("mount.state").as_array().size(), 3U);
    EXPECT_EQ(agent.eventNames(), "mount.changed volumes.changed mount.changed");
}

TEST(Volumes, AVolumeThatWasNotMountedDoesNotComeBackMounted)
{
    TestAgent agent;
    EXPECT_EQ(agent.finish("volumes.resize", size(3134, 30)).at("remounted"), json::value(false));
}

TEST(Volumes, ResizingHasItsLimits)
{
    TestAgent agent;
    EXPECT_EQ(agent.refusal("volumes.resize", size(3121, 61)), "Documents holds 61.4 GB; it cannot shrink to 61 GB.");
    EXPECT_EQ(agent.refusal("volumes.resize", size(3121, 2000)), "Only 760 GB are left on your plan.");
    EXPECT_EQ(agent.refusal("volumes.resize", size(3121, 0)), "A volume has at least 1 GB.");
    EXPECT_EQ(agent.refusal("volumes.resize", size(9, 5)), "There is no volume 9 in this account.");
    EXPECT_EQ(agent.result("mount.state").as_array().size(), 3U);
}

TEST(Volumes, RemovingUnmountsFirstAndKeepsTheUsersKey)
{
    TestAgent agent;
    const std::string folder = agent.world.home.mountFolder("Documents");
    ASSERT_TRUE(std::filesystem::exists(folder));
    const std::int64_t first = agent.start("volumes.remove", id(3121));
    EXPECT_FALSE(std::filesystem::exists(folder));
    EXPECT_EQ(agent.refusal("volumes.remove", id(3121)), "Documents is being deleted; wait until that is done.");
    agent.pass(10);
    EXPECT_TRUE(agent.answer(first)->contains("result"));
    EXPECT_EQ(agent.eventNames(), "mount.changed mount.changed volumes.changed");
    EXPECT_EQ(agent.lastEvent("volumes.changed").as_array().size(), 4U);
    EXPECT_EQ(agent.error("volumes.remove", id(3121)).at("status"), json::value(404));
    EXPECT_TRUE(agent.world.home.hasKey("Documents"));
    EXPECT_TRUE(std::filesystem::exists(agent.world.home.keyFile("Documents")));
}

TEST(Volumes, AFolderWithFilesInItOutlivesItsMount)
{
    TestAgent agent;
    const std::string inside = agent.world.home.mountFolder("Documents") + "/letter";
    std::filesystem::create_directory(inside);
    agent.result("mount.detach", id(3121));
    EXPECT_TRUE(std::filesystem::exists(inside));
}

TEST(Volumes, ARemovalWaitsForTheLastWritesButNotForEver)
{
    TestAgent agent;
    const std::int64_t call = agent.start("volumes.remove", id(3122)); // an hour of pending bytes
    agent.pass(20);
    EXPECT_FALSE(agent.answer(call));
    agent.pass(20);
    EXPECT_TRUE(agent.answer(call));
}
