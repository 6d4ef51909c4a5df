// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "testagent.h"

#include <gtest/gtest.h>

using namespace quillfen::localagent;
using namespace quillfen::localagent::test;

namespace {

constexpr std::int64_t documents = 3121;
constexpr std::int64_t studio = 3130;

std::string shown(TestAgent &agent, std::int64_t id = documents)
{
    return text(agent.result("history.show", {{"volume_id", id}}).at("output"));
}

std::string refused(TestAgent &agent, std::string_view policy)
{
    return agent.refusal("history.set", {{"volume_id", documents}, {"policy", policy}});
}

} // namespace

TEST(Policy, IsStandardUntilItIsSet)
{
    TestAgent agent;
    EXPECT_EQ(shown(agent), "720,24,7,4,6,1");
}

TEST(Policy, IsKeptForEachVolume)
{
    TestAgent agent;
    agent.result("history.set", {{"volume_id", documents}, {"policy", "60,12,3,1,1,0"}});
    EXPECT_EQ(shown(agent), "60,12,3,1,1,0");
    EXPECT_EQ(shown(agent, agent.idOf("studio-projects")), "720,24,7,4,6,1");
    EXPECT_EQ(shown(agent, agent.idOf("photos-archive")), "2880,72,30,12,12,3");
    EXPECT_EQ(shown(agent, agent.idOf("accounts-2025")), "90,24,7,4,6,1");
}

TEST(Policy, SpacesAroundTheNumbersAreAllowed)
{
    TestAgent agent;
    agent.result("history.set", {{"volume_id", documents}, {"policy", " 90, 0,3 ,1,1,0 "}});
    EXPECT_EQ(shown(agent), "90,0,3,1,1,0");
}

TEST(Policy, AnythingButSixWholeNumbersIsRefused)
{
    TestAgent agent;
    const std::string message = "A history policy is six whole numbers with commas between them, like 720,24,7,4,6,1.";
    for (const char *policy : {"", "720", "720,24,7,4,6", "720,24,7,4,6,1,1", "720,24,7,4,6,", "720,24,7,4,6,1.5",
                               "720,24,7,4,6,x", "720,24,7,4 6,1", "+720,24,7,4,6,1"}) {
        EXPECT_EQ(refused(agent, policy), message) << policy;
    }
    EXPECT_EQ(shown(agent), "720,24,7,4,6,1");
}

TEST(Policy, NumbersTheVaultDoesNotKeepAreNamed)
{
    TestAgent agent;
    EXPECT_EQ(refused(agent, "720,24,7,4,6,-1"), "A point of every month is kept for 0 to 100 years.");
    EXPECT_EQ(refused(agent, "10081,24,7,4,6,1"), "A point of every second is kept for 0 to 10080 minutes.");
    EXPECT_EQ(refused(agent, "720,99999999999999999999,7,4,6,1"),
              "A point of every minute is kept for 0 to 720 hours.");
}

TEST(Policy, UnknownAndBusyVolumesAreRefused)
{
    TestAgent agent;
    EXPECT_EQ(agent.refusal("history.show", {{"volume_id", 1}}), "There is no volume 1 in this account.");
    EXPECT_EQ(agent.refusal("history.set", {{"volume_id", 1}, {"policy", "0,0,0,0,0,0"}}),
              "There is no volume 1 in this account.");
    agent.start("volumes.resize", {{"volume_id", documents}, {"size_bytes", 200 * gigabyte}});
    EXPECT_EQ(refused(agent, "60,12,3,1,1,0"), "Documents is being resized; wait until that is done.");
}

TEST(Policy, AShorterOneThinsTheHistory)
{
    TestAgent agent;
    const json::object id{{"volume_id", studio}};
    const std::size_t before = agent.result("restore_points.list", id).at("points").as_array().size();
    agent.result("history.set", {{"volume_id", studio}, {"policy", "60,12,3,1,1,0"}});
    const json::value points = agent.result("restore_points.list", id).at("points");
    EXPECT_LT(points.as_array().size(), before);
    EXPECT_GT(text(points.as_array().front().at("timestamp")), "2026-10") << "nothing is older than a month";
}

TEST(Policy, APinnedPointStaysWhateverItSays)
{
    TestAgent agent;
    const json::value pinned = agent.result("volumes.snapshots", {{"volume_id", studio}, {"label", "pinned Nov 20"}});
    EXPECT_EQ(pinned.at("label"), json::value("pinned Nov 20"));
    agent.result("history.set", {{"volume_id", studio}, {"policy", "0,0,0,0,0,0"}});
    agent.pass(3600);
    const json::value points = agent.result("restore_points.list", {{"volume_id", studio}}).at("points");
    ASSERT_EQ(points.as_array().size(), 1U) << json::serialize(points);
    EXPECT_EQ(points.at(0).at("timestamp"), pinned.at("timestamp"));
    EXPECT_EQ(points.at(0).at("label"), json::value("pinned Nov 20"));
}

TEST(Policy, TheLabelOfAPinMayBeLeftOut)
{
    TestAgent agent;
    EXPECT_EQ(agent.result("volumes.snapshots", {{"volume_id", documents}}).at("label"), json::value(""));
    EXPECT_EQ(agent.refusal("volumes.snapshots", {{"volume_id", 1}}), "There is no volume 1 in this account.");
}
