// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include "localagent/world/mounts.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

namespace {

json::object id(std::int64_t volume)
{
    return {{"volume_id", volume}};
}

} // namespace

TEST(Mounts, AMountIsARealFolderWhileItLasts)
{
    TestAgent agent;
    const std::string folder = agent.world.home.mountFolder("Documents");
    EXPECT_TRUE(std::filesystem::is_directory(folder));
    agent.result("mount.detach", {{"volume_id", 3121}, {"name", "Documents"}});
    EXPECT_FALSE(std::filesystem::exists(folder));
    EXPECT_EQ(agent.result("mount.attach", id(3121)).at("mountpoint"), json::value(folder));
    EXPECT_TRUE(std::filesystem::is_directory(folder));
    EXPECT_EQ(agent.eventNames(), "mount.changed mount.changed");
    EXPECT_EQ(agent.lastEvent("mount.changed"), agent.result("mount.state"));
}

TEST(Mounts, MountingTwiceIsMountingOnce)
{
    TestAgent agent;
    agent.result("mount.attach", id(3121));
    EXPECT_EQ(agent.result("mount.state").as_array().size(), 3U);
    EXPECT_EQ(agent.eventNames(), "");
}

TEST(Mounts, EachRefusalNamesWhatStandsAgainstIt)
{
    TestAgent agent;
    EXPECT_EQ(agent.refusal("mount.attach", id(3133)),
              "vm-store is an iSCSI volume: other machines log in to it, it is not mounted on this computer.");
    EXPECT_EQ(agent.refusal("mount.attach", id(3130)),
              "The appliance of studio-projects is still coming up; try again in a few seconds.");
    EXPECT_EQ(agent.refusal("mount.attach", id(3134)),
              "The appliance of accounts-2025 is not running. Start it first.");
    EXPECT_EQ(agent.refusal("mount.detach", id(3134)), "accounts-2025 is not mounted.");
    EXPECT_EQ(agent.refusal("mount.attach", {{"volume_id", 3121}, {"view", "x"}}),
              "Documents has no open view x. Open it first.");
}

TEST(Mounts, AFileOrALinkInTheWayIsLeftAlone)
{
    TestAgent agent;
    const std::string folder = agent.world.home.mountFolder("Documents");
    agent.result("mount.detach", id(3121));
    std::ofstream(folder) << "a file";
    EXPECT_EQ(agent.refusal("mount.attach", id(3121)), folder + " is in the way: it is not a folder.");
    std::filesystem::remove(folder);
    std::filesystem::create_directory_symlink("/tmp", folder);
    EXPECT_EQ(agent.refusal("mount.attach", id(3121)), folder + " is in the way: it is not a folder.");
    EXPECT_TRUE(std::filesystem::is_symlink(folder));
}

TEST(Mounts, GoWithTheAgent)
{
    TestAgent agent;
    detachAll(agent.world);
    EXPECT_FALSE(std::filesystem::exists(agent.world.home.mountFolder("Documents")));
    EXPECT_EQ(json::serialize(agent.lastEvent("mount.changed")), "[]");
}
